// Has no entry.
extern "C" int marrowfinSomethingElse() {
    return 0;
}
