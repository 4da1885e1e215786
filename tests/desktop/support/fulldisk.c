/* Preloaded into a program: a file system without room. Writes below $FULL_FOLDER fail after $FULL_AFTER bytes in all,
   the last one short, as they do on a disk that fills up in the middle of a file; everything else is untouched. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/uio.h>
#include <unistd.h>

static atomic_long written;

/* How many of these bytes there is room for. */
static size_t room(int fd, size_t count) {
    const char* folder = getenv("FULL_FOLDER");
    const char* after = getenv("FULL_AFTER");
    if (!folder)
        return count;
    char link[64];
    char path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    if (length < 0)
        return count;
    path[length] = 0;
    if (strncmp(path, folder, strlen(folder)) != 0)
        return count;
    const long left = (after ? atol(after) : 0) - atomic_fetch_add(&written, (long)count);
    return left <= 0 ? 0 : left < (long)count ? (size_t)left : count;
}

ssize_t write(int fd, const void* data, size_t count) {
    static ssize_t (*real)(int, const void*, size_t);
    if (!real)
        real = dlsym(RTLD_NEXT, "write");
    const size_t fitting = room(fd, count);
    if (count && !fitting) {
        errno = ENOSPC;
        return -1;
    }
    return real(fd, data, fitting);
}

ssize_t writev(int fd, const struct iovec* parts, int number) {
    static ssize_t (*real)(int, const struct iovec*, int);
    if (!real)
        real = dlsym(RTLD_NEXT, "writev");
    size_t count = 0;
    for (int i = 0; i < number; ++i)
        count += parts[i].iov_len;
    if (room(fd, count) < count) {
        errno = ENOSPC;
        return -1;
    }
    return real(fd, parts, number);
}

size_t fwrite(const void* data, size_t size, size_t number, FILE* file) {
    static size_t (*real)(const void*, size_t, size_t, FILE*);
    if (!real)
        real = dlsym(RTLD_NEXT, "fwrite");
    if (room(fileno(file), size * number) < size * number) {
        errno = ENOSPC;
        return 0;
    }
    return real(data, size, number, file);
}
