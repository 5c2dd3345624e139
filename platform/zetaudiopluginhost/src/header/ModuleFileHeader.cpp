#include "header/ModuleFileHeader.h"

#include <algorithm>
#include <array>

#include <zetaudiopluginhost/ReasonSentences.h>

namespace zetaudiopluginhost {

using zetcore::utility::Reason;

namespace {

enum class FileKind
{
    Elf,
    Pe,
    MachO,
    Text,
    Other,
};

bool IsTextByte(unsigned char byte)
{
    return byte >= 0x20 ? byte != 0x7F : byte == '\t' || byte == '\n' || byte == '\r' || byte == '\f';
}

bool IsMachO(std::string_view start)
{
    static constexpr std::array<std::string_view, 5> magics = {
        "\xFE\xED\xFA\xCE", "\xFE\xED\xFA\xCF", "\xCE\xFA\xED\xFE", "\xCF\xFA\xED\xFE", "\xCA\xFE\xBA\xBE"};
    return std::any_of(magics.begin(), magics.end(),
                       [start](std::string_view magic) { return start.starts_with(magic); });
}

FileKind KindOf(std::string_view start)
{
    if (start.starts_with("\x7F"
                          "ELF"))
        return FileKind::Elf;
    if (IsMachO(start))
        return FileKind::MachO;
    const bool isText = std::all_of(start.begin(), start.end(),
                                    [](char c) { return IsTextByte(static_cast<unsigned char>(c)); });
    if (isText)
        return FileKind::Text;
    return start.starts_with("MZ") ? FileKind::Pe : FileKind::Other;
}

} // namespace

std::optional<Reason> WhyNotLoadable(ByteReader& file, const ModuleTarget& target,
                                     const std::vector<EntryPoint>& entryPoints)
{
    if (file.Size() == 0)
        return Reason{reasons::InEnglish(reasons::emptyFile)};
    std::array<char, 512> start{};
    const std::size_t length = static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), start.size()));
    if (!file.Read(0, start.data(), length))
        return Reason{reasons::InEnglish(reasons::truncated)};

    switch (KindOf(std::string_view(start.data(), length))) {
    case FileKind::Elf:
        return target.format == ModuleFormat::Elf ? WhyElfNotLoadable(file, target.machine, entryPoints)
                                                  : Reason{reasons::InEnglish(reasons::otherSystem, {"ELF"})};
    case FileKind::Pe:
        return target.format == ModuleFormat::Pe
                   ? WhyPeNotLoadable(file, target.machine, entryPoints)
                   : Reason{reasons::InEnglish(reasons::otherSystem, {"Windows"})};
    case FileKind::MachO:
        return Reason{reasons::InEnglish(reasons::otherSystem, {"macOS"})};
    case FileKind::Text:
        return Reason{reasons::InEnglish(reasons::textFile)};
    case FileKind::Other:
        break;
    }
    return Reason{reasons::InEnglish(reasons::noLibrary)};
}

} // namespace zetaudiopluginhost
