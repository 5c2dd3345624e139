// Writes facts about its own process to the file that the environment's ZET_PROCESS_FACTS names, and ends.
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

int main(int argc, char** argv)
{
    const char* const path = std::getenv("ZET_PROCESS_FACTS");
    if (!path)
        return 1;
    std::string descriptors;
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (::fcntl(descriptor, F_GETFD) >= 0)
            descriptors += " " + std::to_string(descriptor);
    sigset_t mask;
    ::sigprocmask(SIG_SETMASK, nullptr, &mask);
    const std::string temporary = std::string(path) + ".new";
    std::ofstream file(temporary);
    file << "arguments " << argc - 1 << "\n";
    file << "program " << argv[0] << "\n";
    file << "folder " << std::filesystem::current_path().string() << "\n";
    file << "descriptors" << descriptors << "\n";
    file << "input " << std::filesystem::read_symlink("/proc/self/fd/0").string() << "\n";
    file << "output " << std::filesystem::read_symlink("/proc/self/fd/1").string() << "\n";
    file << "own session " << (::getsid(0) == ::getpid()) << "\n";
    file << "SIGUSR1 blocked " << ::sigismember(&mask, SIGUSR1) << "\n";
    struct sigaction action = {};
    ::sigaction(SIGUSR2, nullptr, &action);
    file << "SIGUSR2 ignored " << (action.sa_handler == SIG_IGN) << "\n";
    file.close();
    std::filesystem::rename(temporary, path);
    return 0;
}
