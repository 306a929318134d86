/* Loaded before a program: lets one of its calls that a disk answers fail. FAIL_CALL is its name,
 * FAIL_AT which of them (from 1), FAIL_FOREVER 1 lets all after it fail too, FAIL_TOLD a file that is
 * made when one has failed. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

static int Fails(const char* name)
{
    static int calls = 0;
    const char* chosen = getenv("FAIL_CALL");
    if (chosen == NULL || strcmp(chosen, name) != 0) {
        return 0;
    }
    ++calls;
    const int at = atoi(getenv("FAIL_AT"));
    if (calls != at && (calls < at || strcmp(getenv("FAIL_FOREVER"), "1") != 0)) {
        return 0;
    }
    close(creat(getenv("FAIL_TOLD"), 0600));
    errno = EIO;
    return 1;
}

ssize_t pwrite64(int file, const void* bytes, size_t length, off64_t at)
{
    ssize_t (*real)(int, const void*, size_t, off64_t);
    *(void**)&real = dlsym(RTLD_NEXT, "pwrite64");
    return Fails("pwrite64") ? -1 : real(file, bytes, length, at);
}

ssize_t pread64(int file, void* bytes, size_t length, off64_t at)
{
    ssize_t (*real)(int, void*, size_t, off64_t);
    *(void**)&real = dlsym(RTLD_NEXT, "pread64");
    return Fails("pread64") ? -1 : real(file, bytes, length, at);
}

int fdatasync(int file)
{
    int (*real)(int);
    *(void**)&real = dlsym(RTLD_NEXT, "fdatasync");
    return Fails("fdatasync") ? -1 : real(file);
}

int ftruncate64(int file, off64_t length)
{
    int (*real)(int, off64_t);
    *(void**)&real = dlsym(RTLD_NEXT, "ftruncate64");
    return Fails("ftruncate64") ? -1 : real(file, length);
}
