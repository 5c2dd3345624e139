#include "ProcessStat_posix.h"

#include <fstream>
#include <sstream>
#include <string>

namespace zetaudiofilterscan {

ProcessStat StatOf(int process)
{
    // "NUMBER (NAME) STATE PARENT ...", where the name may hold anything.
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    ProcessStat stat;
    if (const auto name = text.rfind(')'); name != text.npos)
        std::istringstream(text.substr(name + 1)) >> stat.state >> stat.parent;
    return stat;
}

} // namespace zetaudiofilterscan
