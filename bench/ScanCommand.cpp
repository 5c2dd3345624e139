#include "ScanCommand.h"

#include <cstdlib>
#include <stdexcept>

#include "CommandOutput.h"
#include "Measure.h"

namespace bench {

namespace {

int NumberOf(const std::string& json, const std::string& key)
{
    const std::string mark = '"' + key + "\":";
    const std::size_t at = json.find(mark);
    if (at == json.npos)
        throw std::runtime_error("the scan printed no result");
    return std::atoi(json.c_str() + at + mark.size());
}

} // namespace

ScanTime RunScanCommand(const ScanCommand& command)
{
    std::string line =
        Quoted(command.programs / "zetaudiopluginmanager") + " --quiet --prefs " + Quoted(command.prefs);
    if (command.timeout > 0)
        line += " --timeout " + std::to_string(command.timeout);
    line += " scan --json";
    if (command.jobs > 0)
        line += " --jobs " + std::to_string(command.jobs);
    line += " " + Quoted(command.modules);
    ScanTime time;
    std::string output;
    time.seconds = Seconds([&] { output = CommandOutput(line); });
    time.scanned = NumberOf(output, "scanned");
    time.found = NumberOf(output, "found");
    return time;
}

} // namespace bench
