#include "text/ConfigurationJournal.h"

#include <array>
#include <charconv>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/utility/Fnv1a.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::File;
using zetcore::filesupport::file_exception;
using zetcore::filesupport::FileUtils;

namespace {

constexpr std::string_view journalMark = "zetaudiofilterhost-journal-1 ";
constexpr std::string_view entryMark = "entry ";

/// "<mark><length> <hash>\n", the numbers in hexadecimal.
std::string HeadLine(std::string_view mark, const ContentFingerprint& fingerprint)
{
    std::array<char, 16> digits;
    const auto hex = [&digits](std::uint64_t value) {
        return std::string(digits.data(),
                           std::to_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr);
    };
    return std::string(mark) + hex(fingerprint.length) + " " + hex(fingerprint.hash) + "\n";
}

/// Takes a head line off the front; nothing, and nothing taken, when there is no whole one.
std::optional<ContentFingerprint> TakeHeadLine(std::string_view& text, std::string_view mark)
{
    const std::size_t lineEnd = text.find('\n');
    if (lineEnd == text.npos || !text.starts_with(mark))
        return std::nullopt;
    const std::string_view numbers = text.substr(mark.size(), lineEnd - mark.size());
    const std::size_t blank = numbers.find(' ');
    if (blank == numbers.npos)
        return std::nullopt;
    const auto length = zetcore::string::ParseNumber<std::uint64_t>(numbers.substr(0, blank), 16);
    const auto hash = zetcore::string::ParseNumber<std::uint64_t>(numbers.substr(blank + 1), 16);
    if (!length || !hash)
        return std::nullopt;
    text.remove_prefix(lineEnd + 1);
    return ContentFingerprint{*length, *hash};
}

/// Takes an entry off the front; nothing when what is there is torn.
std::optional<std::string> TakeEntry(std::string_view& text)
{
    const std::optional<ContentFingerprint> fingerprint = TakeHeadLine(text, entryMark);
    if (!fingerprint || text.size() <= fingerprint->length || text[fingerprint->length] != '\n')
        return std::nullopt;
    const std::string_view payload = text.substr(0, fingerprint->length);
    if (FingerprintOf(payload) != *fingerprint)
        return std::nullopt;
    text.remove_prefix(fingerprint->length + 1);
    return std::string(payload);
}

/// The journal's text behind its first line, when it belongs to this content.
std::optional<std::string> ReadBelonging(const File& base, const ContentFingerprint& fingerprint)
{
    const File journal = ConfigurationJournal::FileFor(base);
    if (!journal.Exists())
        return std::nullopt;
    try {
        const std::string text = FileUtils::ReadFile(journal);
        std::string_view rest = text;
        if (TakeHeadLine(rest, journalMark) == fingerprint)
            return std::string(rest);
    } catch (const file_exception& error) {
        zetcore::debug::TraceLine(1, "PluginRegistry", error.what());
    }
    return std::nullopt;
}

} // namespace

ContentFingerprint FingerprintOf(std::string_view bytes)
{
    return {bytes.size(), zetcore::utility::Fnv1a(bytes)};
}

File ConfigurationJournal::FileFor(const File& base)
{
    return File(base.FullPath() + L".journal");
}

std::uint64_t ConfigurationJournal::SizeBeside(const File& base)
{
    try {
        const File journal = FileFor(base);
        return journal.Exists() ? journal.Size() : 0;
    } catch (const file_exception&) {
        return 0; // it has gone meanwhile
    }
}

std::optional<File> ConfigurationJournal::WrittenFor() const
{
    return base ? std::optional(base->file) : std::nullopt;
}

std::vector<std::string> ConfigurationJournal::ReadEntries(const File& base,
                                                           const ContentFingerprint& fingerprint)
{
    std::vector<std::string> entries;
    const std::optional<std::string> text = ReadBelonging(base, fingerprint);
    if (!text && FileFor(base).Exists())
        zetcore::debug::TraceLine(3, "PluginRegistry",
                                  FileFor(base).FullPathUTF8() + ": belongs to no such file, passed over");
    std::string_view rest = text ? std::string_view(*text) : std::string_view();
    while (!rest.empty()) {
        std::optional<std::string> entry = TakeEntry(rest);
        if (!entry) {
            zetcore::debug::TraceLine(1, "PluginRegistry",
                                      FileFor(base).FullPathUTF8() + ": the last entry is torn, passed over");
            break;
        }
        entries.push_back(std::move(*entry));
    }
    return entries;
}

void ConfigurationJournal::PrepareForWholeSave(const File& base, std::string_view newContent)
{
    if (FileFor(base).Exists() && ReadBelonging(base, FingerprintOf(newContent)))
        FileFor(base).Delete();
}

void ConfigurationJournal::Begin(const File& file, std::string_view content)
{
    base = Base{file, FingerprintOf(content), file.Size(), file.ModificationTime()};
    journalSize = 0;
}

void ConfigurationJournal::End()
{
    base.reset();
}

bool ConfigurationJournal::CanAppendTo(const File& file) const
{
    if (!base || base->file.FullPath() != file.FullPath())
        return false;
    try {
        return file.Size() == base->size && file.ModificationTime() == base->time &&
               SizeBeside(file) == journalSize;
    } catch (const file_exception&) {
        return false;
    }
}

void ConfigurationJournal::Append(std::string_view payload)
{
    std::string entry = HeadLine(entryMark, FingerprintOf(payload));
    entry.append(payload).append("\n");
    const std::wstring path = FileFor(base->file).FullPath();
    try {
        if (journalSize == 0) {
            entry.insert(0, HeadLine(journalMark, base->fingerprint));
            FileUtils::SimpleWriteStringToFile(path, entry);
        } else {
            FileUtils::AppendToFile(path, entry);
        }
    } catch (const file_exception&) {
        End();
        throw;
    }
    journalSize += entry.size();
}

} // namespace zetaudiofilterhost
