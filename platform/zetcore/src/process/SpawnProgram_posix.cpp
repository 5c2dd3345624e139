#include <zetcore/process/SpawnProgram.h>

#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

extern char** environ; // the name is the system's

namespace zetcore::process {

namespace {

void Check(int error)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category());
}

class Descriptors
{
  public:
    explicit Descriptors(const std::vector<int>& descriptors) : Descriptors()
    {
        int number = 0;
        for (const int descriptor : descriptors) {
            const int mode = number == STDIN_FILENO ? O_RDONLY : O_WRONLY;
            Check(descriptor == nullDevice
                      ? ::posix_spawn_file_actions_addopen(&actions, number, "/dev/null", mode, 0)
                      : ::posix_spawn_file_actions_adddup2(&actions, descriptor, number));
            ++number;
        }
        Check(::posix_spawn_file_actions_addclosefrom_np(&actions, number));
    }
    ~Descriptors() { ::posix_spawn_file_actions_destroy(&actions); }
    Descriptors(const Descriptors&) = delete;
    Descriptors& operator=(const Descriptors&) = delete;

    const posix_spawn_file_actions_t* Get() const { return &actions; }

  private:
    Descriptors() { Check(::posix_spawn_file_actions_init(&actions)); }

    posix_spawn_file_actions_t actions; // set by the constructor
};

class Attributes
{
  public:
    Attributes()
    {
        Check(::posix_spawnattr_init(&attributes));
        sigset_t signals;
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&attributes, &signals);
        ::posix_spawnattr_setflags(&attributes,
                                   POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~Attributes() { ::posix_spawnattr_destroy(&attributes); }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;

    const posix_spawnattr_t* Get() const { return &attributes; }

  private:
    posix_spawnattr_t attributes; // set by the constructor
};

pid_t Spawn(std::string program, std::vector<std::string> arguments, const std::vector<int>& descriptors)
{
    std::vector<char*> pointers{program.data()};
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const Descriptors files(descriptors);
    const Attributes attributes;
    pid_t process = -1;
    Check(::posix_spawn(&process, program.c_str(), files.Get(), attributes.Get(), pointers.data(), environ));
    return process;
}

} // namespace

int SpawnProgram(const ProgramSpawn& spawn, std::error_code& error)
try {
    error.clear();
    return Spawn(spawn.program, spawn.arguments, spawn.descriptors);
} catch (const std::system_error& failure) {
    error = failure.code();
    return -1;
}

} // namespace zetcore::process
