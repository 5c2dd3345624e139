#include <zettesting/UnwritableFile.h>

namespace zettesting {

struct UnwritableFile::State
{};

UnwritableFile::UnwritableFile(const std::filesystem::path& file)
{
    std::filesystem::remove(file);
    std::filesystem::create_symlink(file.parent_path() / "missing folder" / file.filename(), file);
}

UnwritableFile::~UnwritableFile() = default;

} // namespace zettesting
