#include "tree/CollationKey.h"

#include <string>

#include <windows.h>

namespace zetui::controls {

/// The system's sort key, which is a string of bytes. Qt's own key compares two of its bytes at a time with
/// the second first, and so puts texts into a wrong order.
struct CollationKey::Key
{
    std::string bytes;
};

CollationKey::CollationKey(const QCollator& collator, const QString& text) : key(std::make_unique<Key>())
{
    const std::wstring locale = collator.locale().bcp47Name().toStdWString();
    const DWORD flags = LCMAP_SORTKEY | (collator.numericMode() ? SORT_DIGITSASNUMBERS : 0) |
                        (collator.caseSensitivity() == Qt::CaseInsensitive ? NORM_IGNORECASE : 0);
    const auto* const source = reinterpret_cast<const wchar_t*>(text.utf16());
    const int length = static_cast<int>(text.size());
    const auto map = [&](char* target, int size) {
        return length == 0 ? 0
                           : ::LCMapStringEx(locale.c_str(), flags, source, length,
                                             reinterpret_cast<wchar_t*>(target), size, nullptr, nullptr, 0);
    };
    key->bytes.resize(static_cast<std::size_t>(map(nullptr, 0)));
    map(key->bytes.data(), static_cast<int>(key->bytes.size()));
}

CollationKey::~CollationKey() = default;
CollationKey::CollationKey(CollationKey&&) noexcept = default;
CollationKey& CollationKey::operator=(CollationKey&&) noexcept = default;

int CollationKey::Compare(const CollationKey& other) const
{
    return key->bytes.compare(other.key->bytes);
}

} // namespace zetui::controls
