// A layer between a program and the system, preloaded: of the calls on files of one folder the n-th
// of a kind fails, once or for ever, and what they change is written down, call by call, with where
// the program has said something on its standard output.
//
//   ECF_CALLS_FOLDER   whose files are meant, and the folder itself
//   ECF_CALLS_FAIL     KIND:N:ERRNO:once or KIND:N:ERRNO:ever, several with commas; unset: none
//   ECF_CALLS_TRACE    where the changes go; unset: nowhere
//
// A change is a line, its fields separated by blanks: its name, numbers, and paths or bytes in
// hexadecimal digits. How many calls of each kind there have been is told where the program says
// something, behind a fault, and at the end. calls.py reads it.
//
// The system's random bytes are nought, so that the same run makes the same files.
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr int MAX_FILES = 1024;

template <class Function>
Function Next(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

struct Fault {
    std::string kind;
    int at = 0;
    int error = EIO;
    bool ever = false;
};

struct Plan {
    std::string folder;
    std::vector<Fault> faults;
    int trace = -1;
    std::map<std::string, int> seen;         // calls so far, by their kind
    std::array<ino_t, MAX_FILES> files = {}; // of the folder, by descriptor; 0: another's
};

int OpenReal(const char* path, int flags, mode_t mode)
{
    static const auto real = Next<int (*)(const char*, int, ...)>("open");
    return real(std::strcmp(path, "/dev/urandom") == 0 ? "/dev/zero" : path, flags, mode);
}

Plan& ThePlan()
{
    static Plan& plan = *[] {
        auto* const made = new Plan; // calls come as long as the program lives
        if (const char* folder = std::getenv("ECF_CALLS_FOLDER")) {
            made->folder = folder;
        }
        const char* fail = std::getenv("ECF_CALLS_FAIL");
        while (fail != nullptr && *fail != '\0') {
            char kind[16] = "";
            char often[8] = "";
            Fault fault;
            std::sscanf(fail, "%15[a-z]:%d:%d:%7[a-z]", kind, &fault.at, &fault.error, often);
            fault.kind = kind;
            fault.ever = std::strcmp(often, "ever") == 0;
            made->faults.push_back(fault);
            const char* const comma = std::strchr(fail, ',');
            fail = comma == nullptr ? nullptr : comma + 1;
        }
        if (const char* trace = std::getenv("ECF_CALLS_TRACE")) {
            made->trace = OpenReal(trace, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
        }
        return made;
    }();
    return plan;
}

bool IsMeant(const char* path)
{
    const std::string& folder = ThePlan().folder;
    return !folder.empty() && std::strncmp(path, folder.c_str(), folder.size()) == 0;
}

ino_t FileOf(int descriptor)
{
    return descriptor >= 0 && descriptor < MAX_FILES
               ? ThePlan().files[static_cast<std::size_t>(descriptor)]
               : 0;
}

void Tell(const std::string& line)
{
    static const auto real = Next<ssize_t (*)(int, const void*, size_t)>("write");
    const int trace = ThePlan().trace;
    const int kept = errno;
    if (trace >= 0 && real(trace, (line + "\n").data(), line.size() + 1) < 0) {
        _exit(97);
    }
    errno = kept;
}

[[gnu::destructor]] void TellCounts()
{
    for (const auto& [kind, count] : ThePlan().seen) {
        Tell("calls " + kind + " " + std::to_string(count));
    }
}

// Whether a call of this kind is to fail; errno then says why.
bool Fails(const char* kind)
{
    Plan& plan = ThePlan();
    const int number = ++plan.seen[kind];
    for (const Fault& fault : plan.faults) {
        if (fault.kind == kind && (number == fault.at || (fault.ever && number > fault.at))) {
            TellCounts();
            errno = fault.error;
            return true;
        }
    }
    return false;
}

std::string Hex(const void* bytes, std::size_t count)
{
    static constexpr char DIGITS[] = "0123456789abcdef";
    std::string hex = ".";
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char byte = static_cast<const unsigned char*>(bytes)[i];
        hex += DIGITS[byte / 16];
        hex += DIGITS[byte % 16];
    }
    return hex;
}

std::string Hex(const char* path)
{
    return Hex(path, std::strlen(path));
}

int Open(const char* path, int flags, mode_t mode)
{
    if (!IsMeant(path)) {
        return OpenReal(path, flags, mode);
    }
    if (Fails("open")) {
        return -1;
    }
    struct stat before = {};
    const bool isNew = stat(path, &before) != 0;
    const int file = OpenReal(path, flags, mode);
    struct stat status = {};
    if (file >= 0 && file < MAX_FILES && fstat(file, &status) == 0) {
        ThePlan().files[static_cast<std::size_t>(file)] = status.st_ino;
        if (isNew) {
            Tell("create " + std::to_string(status.st_ino) + " " + Hex(path));
        }
    }
    return file;
}

ssize_t Write(int file, const void* bytes, std::size_t count, off_t at)
{
    static const auto real = Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    const ino_t inode = FileOf(file);
    if (inode != 0 && Fails("write")) {
        return -1;
    }
    const ssize_t written = real(file, bytes, count, at);
    if (inode != 0 && written > 0) {
        Tell("write " + std::to_string(inode) + " " + std::to_string(at) + " " +
             Hex(bytes, static_cast<std::size_t>(written)));
    }
    return written;
}

int Sync(int file, const char* name)
{
    const auto real = Next<int (*)(int)>(name);
    const ino_t inode = FileOf(file);
    if (inode != 0 && Fails("sync")) {
        return -1;
    }
    const int result = real(file);
    if (inode != 0 && result == 0) {
        struct stat status = {};
        fstat(file, &status);
        Tell(S_ISDIR(status.st_mode) ? "syncnames" : "sync " + std::to_string(inode));
    }
    return result;
}

int Truncate(int file, off_t length)
{
    static const auto real = Next<int (*)(int, off_t)>("ftruncate");
    const ino_t inode = FileOf(file);
    if (inode != 0 && Fails("truncate")) {
        return -1;
    }
    const int result = real(file, length);
    if (inode != 0 && result == 0) {
        Tell("truncate " + std::to_string(inode) + " " + std::to_string(length));
    }
    return result;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Open(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Open(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t count)
{
    static const auto real = Next<ssize_t (*)(int, const void*, size_t)>("write");
    const ino_t inode = FileOf(file);
    if (inode != 0 && Fails("write")) {
        return -1;
    }
    const off_t before = inode != 0 ? lseek(file, 0, SEEK_CUR) : 0;
    const ssize_t written = real(file, bytes, count);
    if (inode != 0 && written > 0) {
        // Where it was written: files that grow by their end alone, too.
        const off_t after = lseek(file, 0, SEEK_CUR);
        Tell("write " + std::to_string(inode) + " " +
             std::to_string(after >= written ? after - written : before) + " " +
             Hex(bytes, static_cast<std::size_t>(written)));
    }
    return written;
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t at)
{
    return Write(file, bytes, count, at);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at)
{
    return Write(file, bytes, count, at);
}

int fsync(int file)
{
    return Sync(file, "fsync");
}

int fdatasync(int file)
{
    return Sync(file, "fdatasync");
}

int ftruncate(int file, off_t length) noexcept
{
    return Truncate(file, length);
}

int ftruncate64(int file, off64_t length) noexcept
{
    return Truncate(file, length);
}

// The program flushes its output behind each line that answers a command.
int fflush(FILE* file)
{
    static const auto real = Next<int (*)(FILE*)>("fflush");
    const int result = real(file);
    if (file == stdout) {
        TellCounts();
        Tell("say");
    }
    return result;
}

int rename(const char* from, const char* to) noexcept
{
    static const auto real = Next<int (*)(const char*, const char*)>("rename");
    if (IsMeant(to) && Fails("rename")) {
        return -1;
    }
    const int result = real(from, to);
    if (result == 0 && IsMeant(to)) {
        Tell("rename " + Hex(from) + " " + Hex(to));
    }
    return result;
}

int unlink(const char* path) noexcept
{
    static const auto real = Next<int (*)(const char*)>("unlink");
    if (IsMeant(path) && Fails("unlink")) {
        return -1;
    }
    const int result = real(path);
    if (result == 0 && IsMeant(path)) {
        Tell("unlink " + Hex(path));
    }
    return result;
}

void* mmap(void* address, size_t length, int protection, int flags, int file, off_t at) noexcept
{
    static const auto real = Next<void* (*)(void*, size_t, int, int, int, off_t)>("mmap");
    if (FileOf(file) != 0 && Fails("map")) {
        return MAP_FAILED;
    }
    return real(address, length, protection, flags, file, at);
}

void* mmap64(void* address, size_t length, int protection, int flags, int file, off64_t at) noexcept
{
    return mmap(address, length, protection, flags, file, at);
}

int close(int file)
{
    static const auto real = Next<int (*)(int)>("close");
    const bool isMeant = FileOf(file) != 0;
    if (isMeant) {
        ThePlan().files[static_cast<std::size_t>(file)] = 0;
    }
    const bool fails = isMeant && Fails("close");
    const int error = errno;
    const int result = real(file); // closed it is, whatever is said
    if (fails) {
        errno = error;
        return -1;
    }
    return result;
}
}
