/* Preloaded into a program: writes a line to $DISK_LOG when a file takes its name ("named PATH") and when the disk is
   told to keep one ("synced PATH", with the path that it has by then; "synced -" while it has none). Everything is
   passed on. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static void note(const char* what, const char* path) {
    const char* log = getenv("DISK_LOG");
    if (!log)
        return;
    char line[4200];
    const int length = snprintf(line, sizeof line, "%s %s\n", what, path);
    const int fd = open(log, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return;
    if (write(fd, line, (size_t)length) != length)
        abort();
    close(fd);
}

int fsync(int fd) {
    static int (*real)(int);
    if (!real)
        real = dlsym(RTLD_NEXT, "fsync");
    char link[64];
    char path[4096];
    snprintf(link, sizeof link, "/proc/self/fd/%d", fd);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    const int result = real(fd);
    path[length < 0 ? 0 : length] = 0;
    const char* name = strrchr(path, '/');
    note("synced", name && name[1] != '#' && name[1] != '.' ? path : "-");
    return result;
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    static int (*real)(int, const char*, int, const char*, int);
    if (!real)
        real = dlsym(RTLD_NEXT, "linkat");
    const int result = real(fromFolder, from, toFolder, to, flags);
    const char* name = strrchr(to, '/');
    if (result == 0 && name && name[1] != '.')
        note("named", to);
    return result;
}

int rename(const char* from, const char* to) {
    static int (*real)(const char*, const char*);
    if (!real)
        real = dlsym(RTLD_NEXT, "rename");
    const int result = real(from, to);
    if (result == 0)
        note("named", to);
    return result;
}
