#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiofilterhost {

/// Names a content exactly: its length and 64-bit FNV-1a.
struct ContentFingerprint
{
    std::uint64_t length = 0;
    std::uint64_t hash = 0;

    friend bool operator==(const ContentFingerprint&, const ContentFingerprint&) = default;
};
ContentFingerprint FingerprintOf(std::string_view bytes);

/// The journal beside a registry file: changes made since the file, the base, was written. Its first line
/// ties it to the base's exact content, so that a journal that outlived its base is recognised; each entry
/// carries its own length and hash, so that a torn one is.
///
/// An object is the writing side, for one base that this process has written itself. It appends only as long
/// as both files are as it left them.
class ConfigurationJournal
{
  public:
    static zetcore::filesupport::File FileFor(const zetcore::filesupport::File& base);
    /// 0 when there is none.
    static std::uint64_t SizeBeside(const zetcore::filesupport::File& base);
    /// The whole entries, in order, of the journal that belongs to this content of the base. A journal that
    /// is missing, or belongs to another content, has no entries. A journal that cannot be read is traced.
    static std::vector<std::string> ReadEntries(const zetcore::filesupport::File& base,
                                                const ContentFingerprint& fingerprint);
    /// To be called before a whole save: should the journal belong to just the content that is to be
    /// written, replacing the base would bring its entries back to life, so it goes first. Throws
    /// `file_exception`.
    static void PrepareForWholeSave(const zetcore::filesupport::File& base, std::string_view newContent);

    /// The base was written in whole with this content, and any older journal is gone.
    void Begin(const zetcore::filesupport::File& base, std::string_view content);
    /// From now on, a whole save is needed.
    void End();
    bool CanAppendTo(const zetcore::filesupport::File& base) const;
    /// The file that it is written for; nothing when a whole save is needed.
    std::optional<zetcore::filesupport::File> WrittenFor() const;
    std::uint64_t Size() const noexcept { return journalSize; }
    /// In one write. When it throws (`file_exception`), the journal has ended.
    void Append(std::string_view payload);

  private:
    struct Base
    {
        zetcore::filesupport::File file;
        ContentFingerprint fingerprint;
        std::uint64_t size = 0;
        std::int64_t time = 0;
    };
    std::optional<Base> base;
    std::uint64_t journalSize = 0;
};

} // namespace zetaudiofilterhost
