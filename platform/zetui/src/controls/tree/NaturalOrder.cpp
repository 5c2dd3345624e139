#include "controls/tree/NaturalOrder.h"

#include <algorithm>
#include <cstring>

#include "ui/QtText.h"

namespace zetui::controls {

namespace {

/// Longer runs of digits are several numbers, which only puzzles who reads them.
constexpr std::size_t longestNumber = 200;
constexpr std::size_t chunkSize = 8;

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// The next eight bytes as a number that compares as they do; zeros follow the end.
std::uint64_t ChunkAt(std::string_view key, std::size_t depth)
{
    unsigned char bytes[chunkSize] = {};
    if (depth < key.size())
        std::memcpy(bytes, key.data() + depth, std::min(chunkSize, key.size() - depth));
    std::uint64_t chunk = 0;
    for (const unsigned char byte : bytes)
        chunk = chunk << 8 | byte;
    return chunk;
}

bool EndsIn(std::uint64_t chunk)
{
    return (chunk & 0xFF) == 0;
}

} // namespace

/// What one sort works on.
struct NaturalOrder::Keys
{
    struct Ascii
    {
        std::uint64_t chunk = 0;
        std::size_t key, keySize, text, textSize;
        int index;
    };
    struct Other
    {
        QCollatorSortKey key;
        QString text;
        int index;
    };

    std::vector<Ascii> ascii;
    std::vector<Other> others;
    /// The keys and the texts of `ascii`, one after the other.
    std::string keyBytes, textBytes;

    std::string_view KeyOf(const Ascii& item) const
    {
        return std::string_view(keyBytes).substr(item.key, item.keySize);
    }
    QString TextOf(const Ascii& item) const
    {
        return QString::fromLatin1(textBytes.data() + item.text, static_cast<qsizetype>(item.textSize));
    }
};

QLocale NaturalOrder::UserLocale()
{
    const QLocale locale = QLocale::system().collation();
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

NaturalOrder::NaturalOrder(const QLocale& locale) : collator(locale)
{
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    MakeRanks();
    asciiByCharacter = AsciiPairsKeepTheirPlace();
}

void NaturalOrder::MakeRanks()
{
    std::vector<QString> characters;
    for (char16_t code = 1; code < 128; ++code) {
        const QString character = QChar(code);
        // Compared with nothing at all, everything counts.
        if (collator.compare(QChar('a') + character, QStringLiteral("a")) != 0)
            characters.push_back(character);
    }
    std::stable_sort(characters.begin(), characters.end(), [this](const QString& left, const QString& right) {
        return collator.compare(left, right) < 0;
    });
    std::uint8_t rank = 0;
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (i == 0 || collator.compare(characters[i - 1], characters[i]) != 0)
            ++rank;
        ranks[characters[i].front().unicode()] = rank;
    }
}

bool NaturalOrder::AsciiPairsKeepTheirPlace() const
{
    const auto agrees = [this](QChar first, QChar second, const QString& other, QChar otherSecond) {
        const int expected = ranks[second.unicode()] - ranks[otherSecond.unicode()];
        const int found = collator.compare(QString(first) + second, other);
        return (expected < 0) == (found < 0) && (expected > 0) == (found > 0);
    };
    for (char16_t first = 'a'; first <= 'z'; ++first) {
        for (char16_t second = 1; second < 128; ++second) {
            if (ranks[second] == 0 || (second >= '0' && second <= '9'))
                continue;
            for (const char16_t other : {u'a', u'm', u'z'}) {
                if (!agrees(first, second, QString(QChar(first)) + QChar(other), other))
                    return false;
            }
        }
    }
    return true;
}

/// False, with the key as it was, for a text that is not ASCII alone.
bool NaturalOrder::AppendKey(std::wstring_view text, std::string& key) const
{
    const std::size_t start = key.size();
    for (std::size_t i = 0; i < text.size();) {
        const auto code = static_cast<std::uint32_t>(text[i]);
        if (code >= 128) {
            key.resize(start);
            return false;
        }
        if (!IsDigit(text[i])) {
            if (ranks[code] != 0)
                key.push_back(static_cast<char>(ranks[code]));
            ++i;
            continue;
        }
        while (i < text.size() && text[i] == L'0')
            ++i;
        const std::size_t number = i;
        while (i < text.size() && IsDigit(text[i]) && i - number < longestNumber)
            ++i;
        key.push_back(static_cast<char>(ranks[U'0']));
        key.push_back(static_cast<char>(1 + (i - number)));
        for (std::size_t digit = number; digit < i; ++digit)
            key.push_back(static_cast<char>(text[digit]));
    }
    return true;
}

/// By eight bytes at a time: what is equal in them, and only that, is sorted by the next eight.
void NaturalOrder::SortKeys(Keys& keys, bool ascending) const
{
    struct Range
    {
        std::size_t begin, end, depth;
    };
    std::vector<Range> ranges{{0, keys.ascii.size(), 0}};
    while (!ranges.empty()) {
        const Range range = ranges.back();
        ranges.pop_back();
        const auto begin = keys.ascii.begin() + static_cast<std::ptrdiff_t>(range.begin);
        const auto end = keys.ascii.begin() + static_cast<std::ptrdiff_t>(range.end);
        bool same = true;
        for (auto item = begin; item != end; ++item) {
            item->chunk = ChunkAt(keys.KeyOf(*item), range.depth);
            same = same && item->chunk == begin->chunk;
        }
        if (!same) {
            std::sort(begin, end, [ascending](const Keys::Ascii& left, const Keys::Ascii& right) {
                if (left.chunk != right.chunk)
                    return (left.chunk < right.chunk) == ascending;
                return left.index < right.index;
            });
        }
        for (auto first = begin; first != end;) {
            auto last =
                std::find_if(first, end, [first](const auto& item) { return item.chunk != first->chunk; });
            if (last - first > 1 && !EndsIn(first->chunk))
                ranges.push_back({static_cast<std::size_t>(first - keys.ascii.begin()),
                                  static_cast<std::size_t>(last - keys.ascii.begin()),
                                  range.depth + chunkSize});
            first = last;
        }
    }
}

void NaturalOrder::SortOthers(Keys& keys, bool ascending) const
{
    std::sort(keys.others.begin(), keys.others.end(),
              [ascending](const Keys::Other& left, const Keys::Other& right) {
                  const int order = left.key.compare(right.key);
                  return order != 0 ? (order < 0) == ascending : left.index < right.index;
              });
}

std::vector<int> NaturalOrder::Merged(const Keys& keys, bool ascending) const
{
    std::vector<int> sorted;
    sorted.reserve(keys.ascii.size() + keys.others.size());
    auto next = keys.ascii.begin();
    for (const Keys::Other& other : keys.others) {
        const auto place = std::lower_bound(
            next, keys.ascii.end(), other, [&](const Keys::Ascii& item, const Keys::Other& sought) {
                const int order = collator.compare(keys.TextOf(item), sought.text);
                return order != 0 ? (order < 0) == ascending : item.index < sought.index;
            });
        for (; next != place; ++next)
            sorted.push_back(next->index);
        sorted.push_back(other.index);
    }
    for (; next != keys.ascii.end(); ++next)
        sorted.push_back(next->index);
    return sorted;
}

std::vector<int> NaturalOrder::Sorted(int count, const TextOf& textOf, bool ascending) const
{
    Keys keys;
    keys.ascii.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        const std::wstring text = textOf(index);
        const std::size_t key = keys.keyBytes.size();
        if (asciiByCharacter && AppendKey(text, keys.keyBytes)) {
            const std::size_t start = keys.textBytes.size();
            for (const wchar_t character : text)
                keys.textBytes.push_back(static_cast<char>(character));
            keys.ascii.push_back({0, key, keys.keyBytes.size() - key, start, text.size(), index});
        } else {
            const QString other = ui::ToQString(text);
            keys.others.push_back({collator.sortKey(other), other, index});
        }
    }
    // A text that is put in place by comparing costs several times what its sort key costs.
    if (keys.others.size() > keys.ascii.size() / 8) {
        for (const Keys::Ascii& item : keys.ascii) {
            const QString text = keys.TextOf(item);
            keys.others.push_back({collator.sortKey(text), text, item.index});
        }
        keys.ascii.clear();
    }
    SortKeys(keys, ascending);
    SortOthers(keys, ascending);
    return Merged(keys, ascending);
}

} // namespace zetui::controls
