/* Preloaded into a program: a disk that is slow to take anything. A write below $SLOW_FOLDER waits for as long as the
   file $SLOW_WHILE is there, and says so by making $SLOW_WHILE.waiting; everything else is untouched. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

static int isBelow(int fd, const char* folder) {
    char link[64];
    char path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return 0;
    path[length] = 0;
    return strncmp(path, folder, strlen(folder)) == 0;
}

static void sayWaiting(const char* gate) {
    char path[4096];
    snprintf(path, sizeof path, "%s.waiting", gate);
    const int fd = open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (fd >= 0)
        close(fd);
}

ssize_t write(int fd, const void* data, size_t count) {
    static ssize_t (*real)(int, const void*, size_t);
    if (!real)
        real = dlsym(RTLD_NEXT, "write");
    const char* folder = getenv("SLOW_FOLDER");
    const char* gate = getenv("SLOW_WHILE");
    if (folder && gate && isBelow(fd, folder)) {
        if (access(gate, F_OK) == 0)
            sayWaiting(gate);
        const struct timespec pause = {0, 1000000};
        while (access(gate, F_OK) == 0)
            nanosleep(&pause, NULL);
    }
    return real(fd, data, count);
}
