#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zettesting {

/// A new folder under the system's temporary one. The destructor removes it with everything in it.
class TemporaryFolder
{
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const noexcept { return path; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path / name; }
    std::wstring Wide() const;

  private:
    std::filesystem::path path;
};

std::string ReadAll(const std::filesystem::path& file);
void WriteAll(const std::filesystem::path& file, std::string_view bytes);
/// The path as zetcore writes it in wide strings. Bytes that are no UTF-8 are kept.
std::wstring ToWide(const std::filesystem::path& path);

} // namespace zettesting
