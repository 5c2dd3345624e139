#include "FaultFixture.h"

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/utility/Backoff.h>
#include <zettesting/Patience.h>

namespace {

constexpr std::chrono::minutes longest{1};

/// Reads what is still there: the process may end at any moment.
std::string ReadSystemFile(const std::filesystem::path& file)
{
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return std::move(text).str();
}

/// "NUMBER (NAME) STATE PARENT ...", where the name may hold anything.
SeenProcess ReadProcess(int number)
{
    const std::filesystem::path folder = "/proc/" + std::to_string(number);
    SeenProcess process;
    process.number = number;
    const std::string text = ReadSystemFile(folder / "stat");
    std::istringstream rest(text.substr(std::min(text.rfind(')') + 1, text.size())));
    rest >> process.state >> process.parent;
    const std::string command = ReadSystemFile(folder / "cmdline");
    if (command.find("zetaudiopluginmanager") != command.npos)
        process.kind = SeenProcess::Kind::Host;
    else if (command.find("zetaudiofilterscan") != command.npos)
        process.kind = command.find("--worker") != command.npos ? SeenProcess::Kind::Worker
                                                                : SeenProcess::Kind::Supervisor;
    return process;
}

} // namespace

/// The named pipe on which a process tells that it stops. It is open for reading and writing, so that neither
/// side ever waits for the other.
class FaultFixture::Pipe
{
  public:
    explicit Pipe(const std::filesystem::path& path)
    {
        ::mkfifo(path.c_str(), 0600);
        descriptor = ::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    }
    ~Pipe() { ::close(descriptor); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    /// Waits a moment and returns what was written.
    std::string Read() const
    {
        pollfd waiting{descriptor, POLLIN, 0};
        ::poll(&waiting, 1, 20);
        std::array<char, 512> text{};
        const ssize_t length = ::read(descriptor, text.data(), text.size());
        return length > 0 ? std::string(text.data(), static_cast<std::size_t>(length)) : std::string();
    }

  private:
    int descriptor = -1;
};

FaultFixture::FaultFixture() = default;

FaultFixture::~FaultFixture()
{
    for (const SeenProcess& process : Processes())
        if (process.state == 'T')
            ::kill(process.number, SIGKILL);
}

void FaultFixture::StopAt(const std::string& place, unsigned visit)
{
    const auto path = folder / "stops" / "here";
    std::filesystem::create_directory(path.parent_path());
    AllowWriting(path.parent_path());
    pipe = std::make_unique<Pipe>(path);
    environment["ZET_FAULT_PIPE"] = path.string();
    AddFault(place + ":" + std::to_string(visit) + ":stop");
}

void FaultFixture::AddFault(const std::string& fault)
{
    auto& variable = environment["ZET_FAULT"];
    variable = variable ? *variable + ";" + fault : fault;
}

void FaultFixture::WithoutFaults()
{
    environment["ZET_FAULT"] = std::nullopt;
}

std::optional<FaultFixture::Stop> FaultFixture::WaitForStop() const
{
    const auto giveUp = std::chrono::steady_clock::now() + longest;
    bool hostWasSeen = false;
    while (std::chrono::steady_clock::now() < giveUp) {
        std::istringstream said(pipe->Read());
        Stop stop;
        if (!(said >> stop.place >> stop.process)) {
            // For a moment after its start, the child is still a copy of this process.
            const bool hostIsSeen = !Numbers(SeenProcess::Kind::Host).empty();
            if (hostWasSeen && !hostIsSeen)
                return std::nullopt;
            hostWasSeen = hostIsSeen;
            continue;
        }
        // The process writes its line just before it stops.
        zetcore::utility::Backoff pause;
        while (ReadProcess(stop.process).state != 'T' && std::chrono::steady_clock::now() < giveUp)
            pause();
        return stop;
    }
    return std::nullopt;
}

void FaultFixture::Continue(const Stop& stop) const
{
    ::kill(stop.process, SIGCONT);
}

std::vector<SeenProcess> FaultFixture::Processes() const
{
    std::vector<SeenProcess> processes;
    for (const std::string& line : zettesting::ProcessesWithEnvironment(folder.Path().string()))
        processes.push_back(ReadProcess(std::stoi(line)));
    return processes;
}

std::vector<int> FaultFixture::Numbers(SeenProcess::Kind kind) const
{
    std::vector<int> numbers;
    for (const SeenProcess& process : Processes())
        if (process.kind == kind && process.state != 'Z')
            numbers.push_back(process.number);
    return numbers;
}

std::vector<int> FaultFixture::AwaitNumbers(SeenProcess::Kind kind) const
{
    std::vector<int> numbers;
    zettesting::Becomes([&] {
        numbers = Numbers(kind);
        return !numbers.empty();
    });
    return numbers;
}

void FaultFixture::KillAll(const std::vector<int>& numbers)
{
    for (const int number : numbers)
        ::kill(number, SIGKILL);
}

std::vector<std::string> FaultFixture::DamagedFiles() const
{
    std::vector<std::string> damaged;
    for (const auto& entry : std::filesystem::directory_iterator(prefs))
        if (entry.path().string().find(".damaged") != std::string::npos)
            damaged.push_back(entry.path().string());
    return damaged;
}
