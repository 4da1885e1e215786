"""What the tests on the virtual desktop share: the desktop itself, input, pixels, sample windows, the program."""
