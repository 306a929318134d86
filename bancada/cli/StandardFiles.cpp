#include "bancada/cli/StandardFiles.h"

#include "bancada/Messages.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <iostream>
#include <poll.h>
#include <unistd.h>

namespace bancada
{
namespace
{

bool ReaderIsGone(int file)
{
    pollfd state = {};
    state.fd = file;
    state.events = POLLOUT;
    return poll(&state, 1, 0) == 1 && (state.revents & POLLERR) != 0;
}

} // namespace

void OpenStandardFiles()
{
    int file = open("/dev/null", O_RDWR);
    while (file >= 0 && file <= STDERR_FILENO) {
        file = open("/dev/null", O_RDWR);
    }
    if (file >= 0) {
        close(file);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool FlushStandardOutput()
{
    std::cout.flush();
    const bool written = std::cout.good() && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (written || ReaderIsGone(STDOUT_FILENO)) {
        return true;
    }
    std::cerr << "ecf-bancada: " << Tr("standard output could not be written") << "\n";
    return false;
}

} // namespace bancada
