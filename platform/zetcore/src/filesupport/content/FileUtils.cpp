#include <zetcore/filesupport/content/FileUtils.h>

#include <algorithm>
#include <mutex>
#include <random>
#include <sstream>

#include <zetcore/filesupport/content/IPlatformByteStream.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/content/AppendHandle.h"
#include "filesupport/content/FileReplacement.h"
#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/FileStatus.h"

namespace zetcore::filesupport {

std::string MakeTemporaryName()
{
    // A new device asks the processor what it can do, which takes long in a virtual machine.
    static std::mutex mutex;
    static std::random_device random;
    std::ostringstream name;
    const std::lock_guard lock(mutex);
    name << ".zet-" << std::hex << random() << '-' << random() << ".tmp";
    return name.str();
}

void FileUtils::SimpleWriteStringToFile(const std::wstring& path, std::string_view bytes)
{
    ReplaceWholeFile(path, bytes, Durability::Handover);
}

void FileUtils::ReplaceContent(const std::wstring& path, std::string_view bytes, Durability durability)
{
    ReplaceWholeFile(path, bytes, durability);
}

void FileUtils::AppendToFile(const std::wstring& path, std::string_view bytes)
{
    AppendHandle(path).Write(bytes);
}

std::string FileUtils::ReadFile(const File& file, std::uint64_t maxBytes)
{
    const auto stream = IPlatformByteStream::OpenForReading(file);
    const auto refuseAbove = [&](std::uint64_t size) {
        if (size > maxBytes)
            throw file_exception("read", file.FullPath(), std::make_error_code(std::errc::file_too_large));
    };
    const std::uint64_t length = stream->Length();
    refuseAbove(length);

    // The length is only a first guess: the file may grow meanwhile, and some system files say 0.
    constexpr std::size_t smallestRoom = 4096;
    std::string content;
    std::size_t size = 0;
    content.resize(std::max<std::size_t>(static_cast<std::size_t>(length) + 1, smallestRoom));
    while (const std::size_t got = stream->ReadBlock(content.data() + size, content.size() - size)) {
        size += got;
        refuseAbove(size);
        if (size == content.size())
            content.resize(content.size() * 2);
    }
    content.resize(size);
    return content;
}

std::wstring FileUtils::KeepAside(const File& file)
{
    constexpr const char* operation = "keep aside";
    // Every damaged file takes one name. The search must end, and a user with so many has other troubles.
    constexpr int mostNames = 10'000;
    const std::filesystem::path damaged = ToCheckedPath(operation, file.FullPath());
    std::error_code error;
    for (int number = 1; number <= mostNames; ++number) {
        std::wstring aside = file.FullPath() + L".damaged" + (number == 1 ? L"" : std::to_wstring(number));
        error = RenameToFreeName(damaged, ToNativePath(aside));
        if (!error)
            return aside;
        if (error != std::errc::file_exists)
            break;
    }
    throw file_exception(operation, file.FullPath(), error);
}

} // namespace zetcore::filesupport
