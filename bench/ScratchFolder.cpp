#include "ScratchFolder.h"

#include <random>
#include <system_error>

namespace bench {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder(const std::string& name)
    : path(fs::temp_directory_path() / (name + "-" + std::to_string(std::random_device()())))
{
    fs::create_directory(path);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

std::string ScratchFolder::Prefs()
{
    const fs::path prefs = path / ("prefs" + std::to_string(++count));
    fs::create_directory(prefs);
    return prefs.string();
}

} // namespace bench
