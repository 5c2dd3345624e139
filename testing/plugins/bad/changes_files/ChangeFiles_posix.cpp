#include "ChangeFiles.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zettestplugin {

namespace {

namespace fs = std::filesystem;

void Tell(const char* what, bool done)
{
    std::printf("%s: %s\n", what, done ? "done" : errno == EACCES ? "refused" : "failed");
}

bool Write(const fs::path& path, int flags)
{
    errno = 0;
    const int file = ::open(path.c_str(), flags, 0600);
    const bool done = file >= 0 && ::write(file, "mine", 4) == 4;
    if (file >= 0)
        ::close(file);
    return done;
}

bool Empty(const fs::path& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_TRUNC);
    if (file >= 0)
        ::close(file);
    return file >= 0;
}

bool WriteStream(const fs::path& path)
{
    errno = 0;
    std::ofstream stream(path);
    return static_cast<bool>(stream << "mine" << std::flush);
}

/// Runs the command in a program of its own.
bool Shell(const std::string& command)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ::execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
        ::_exit(127);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    errno = EACCES;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void ChangeOthers(const fs::path& victim)
{
    const fs::path letter = victim / "letter";
    Tell("write", Write(letter, O_WRONLY));
    Tell("append", Write(letter, O_WRONLY | O_APPEND));
    Tell("write stream", WriteStream(letter));
    Tell("truncate", ::truncate(letter.c_str(), 0) == 0);
    Tell("empty", Empty(letter));
    Tell("make", Write(victim / "new", O_WRONLY | O_CREAT));
    Tell("make folder", ::mkdir((victim / "folder").c_str(), 0700) == 0);
    Tell("make link", ::symlink("letter", (victim / "link").c_str()) == 0);
    Tell("make pipe", ::mkfifo((victim / "pipe").c_str(), 0600) == 0);
    Tell("move", ::rename(letter.c_str(), (victim / "moved").c_str()) == 0);
    Tell("remove folder", ::rmdir((victim / "empty").c_str()) == 0);
    Tell("delete", ::unlink(letter.c_str()) == 0);
    Tell("shell writes", Shell("echo mine > '" + letter.string() + "'"));
    Tell("shell deletes", Shell("rm -f '" + letter.string() + "'"));
}

void ReachParent()
{
    // The scanner's supervisor. Another program of the user's would do, too.
    errno = 0;
    const bool traced = ::ptrace(PTRACE_SEIZE, ::getppid(), nullptr, nullptr) == 0;
    std::printf("trace: %s\n", traced ? "done" : errno == EPERM ? "refused" : "failed");
    const char* const bystander = std::getenv("ZET_TEST_BYSTANDER");
    errno = 0;
    const bool signalled = bystander && ::kill(std::atoi(bystander), SIGTERM) == 0;
    std::printf("signal: %s\n", signalled ? "done" : errno == EPERM ? "refused" : "failed");
}

void WriteOwn()
{
    const fs::path home = std::getenv("HOME");
    const char* const config = std::getenv("XDG_CONFIG_HOME");
    const fs::path settings = config ? fs::path(config) : home / ".config";
    const fs::path temporary = fs::temp_directory_path();
    std::error_code ignored;
    Tell("dot file", Write(home / ".changes_files", O_WRONLY | O_CREAT));
    fs::create_directories(settings / "changes_files", ignored);
    Tell("settings", Write(settings / "changes_files" / "settings", O_WRONLY | O_CREAT));
    fs::create_directories(home / ".cache" / "changes_files", ignored);
    Tell("cache", WriteStream(home / ".cache" / "changes_files" / "cache"));
    Tell("temporary", Write(temporary / "first", O_RDWR | O_CREAT));
    fs::create_directory(temporary / "folder", ignored);
    Tell("move temporary",
         ::rename((temporary / "first").c_str(), (temporary / "folder" / "second").c_str()) == 0);
    Tell("truncate temporary", ::truncate((temporary / "folder" / "second").c_str(), 1) == 0);
    Tell("null", Write("/dev/null", O_WRONLY));
    std::ifstream known(home / "known");
    std::string text{std::istreambuf_iterator<char>(known), {}};
    std::printf("known: %s\n", text.c_str());
    std::printf("temporary folder: %s\n", temporary.c_str());
}

} // namespace

void ChangeFiles()
{
    if (const char* const victim = std::getenv("ZET_TEST_VICTIM"))
        ChangeOthers(victim);
    ReachParent();
    WriteOwn();
    std::fflush(stdout);
}

} // namespace zettestplugin
