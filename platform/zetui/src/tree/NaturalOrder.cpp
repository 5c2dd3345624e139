#include "tree/NaturalOrder.h"

#include <algorithm>

#include "pixmill/QtText.h"
#include "tree/CollationKey.h"

namespace zetui::controls {

namespace {

/// Longer runs of digits are several numbers, which only puzzles who reads them.
constexpr std::size_t longestNumber = 200;
constexpr std::size_t chunkSize = 8;

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// Eight bytes as a number that compares as they do, zeros for all beyond `size`.
std::uint64_t ChunkOf(const char* bytes, std::size_t size)
{
    std::uint64_t chunk = 0;
    for (std::size_t i = 0; i < chunkSize; ++i)
        chunk = chunk << 8 | static_cast<unsigned char>(bytes[i]);
    return size >= chunkSize ? chunk : chunk & ~(~std::uint64_t{0} >> (8 * size));
}

bool EndsIn(std::uint64_t chunk)
{
    return (chunk & 0xFF) == 0;
}

} // namespace

/// One sort works on these.
struct NaturalOrder::Keys
{
    struct Ascii
    {
        std::size_t key, keySize, text, textSize;
        int index;
    };
    /// The sort moves these about: a piece of a key, and the place of the rest in `ascii`.
    struct Piece
    {
        std::uint64_t chunk;
        std::uint32_t item;
    };
    struct Other
    {
        CollationKey key;
        QString text;
        int index;
    };

    std::vector<Ascii> ascii;
    std::vector<Piece> sorted;
    std::vector<Other> others;
    /// The keys and the texts of `ascii`, one after the other.
    std::string keyBytes, textBytes;

    std::uint64_t ChunkAt(const Piece& piece, std::size_t depth) const
    {
        const Ascii& item = ascii[piece.item];
        return depth < item.keySize ? ChunkOf(keyBytes.data() + item.key + depth, item.keySize - depth) : 0;
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

/// If two letters sort as one of their own, the pair is out of place among those with the same first.
bool NaturalOrder::AsciiPairsKeepTheirPlace() const
{
    std::vector<char16_t> seconds;
    for (char16_t code = 1; code < 128; ++code) {
        if (ranks[code] != 0 && !IsDigit(static_cast<wchar_t>(code)))
            seconds.push_back(code);
    }
    std::sort(seconds.begin(), seconds.end(),
              [this](char16_t left, char16_t right) { return ranks[left] < ranks[right]; });
    for (char16_t first = 'a'; first <= 'z'; ++first) {
        for (std::size_t i = 1; i < seconds.size(); ++i) {
            const int order = collator.compare(QString(QChar(first)) + QChar(seconds[i - 1]),
                                               QString(QChar(first)) + QChar(seconds[i]));
            if (order > 0 || (order == 0) != (ranks[seconds[i - 1]] == ranks[seconds[i]]))
                return false;
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
    std::vector<Keys::Piece>& pieces = keys.sorted;
    for (std::uint32_t item = 0; item < keys.ascii.size(); ++item)
        pieces.push_back({0, item});
    std::vector<Range> ranges{{0, pieces.size(), 0}};
    while (!ranges.empty()) {
        const Range range = ranges.back();
        ranges.pop_back();
        const auto begin = pieces.begin() + static_cast<std::ptrdiff_t>(range.begin);
        const auto end = pieces.begin() + static_cast<std::ptrdiff_t>(range.end);
        bool same = true;
        for (auto piece = begin; piece != end; ++piece) {
            piece->chunk = keys.ChunkAt(*piece, range.depth);
            same = same && piece->chunk == begin->chunk;
        }
        if (!same) {
            std::sort(begin, end, [ascending](const Keys::Piece& left, const Keys::Piece& right) {
                if (left.chunk != right.chunk)
                    return (left.chunk < right.chunk) == ascending;
                return left.item < right.item;
            });
        }
        for (auto first = begin; first != end;) {
            auto last =
                std::find_if(first, end, [first](const auto& piece) { return piece.chunk != first->chunk; });
            if (last - first > 1 && !EndsIn(first->chunk))
                ranges.push_back({static_cast<std::size_t>(first - pieces.begin()),
                                  static_cast<std::size_t>(last - pieces.begin()), range.depth + chunkSize});
            first = last;
        }
    }
}

void NaturalOrder::SortOthers(Keys& keys, bool ascending) const
{
    std::sort(keys.others.begin(), keys.others.end(),
              [ascending](const Keys::Other& left, const Keys::Other& right) {
                  const int order = left.key.Compare(right.key);
                  return order != 0 ? (order < 0) == ascending : left.index < right.index;
              });
}

std::vector<int> NaturalOrder::Merged(const Keys& keys, bool ascending) const
{
    std::vector<int> sorted;
    sorted.reserve(keys.ascii.size() + keys.others.size());
    auto next = keys.sorted.cbegin();
    for (const Keys::Other& other : keys.others) {
        const auto place = std::lower_bound(
            next, keys.sorted.cend(), other, [&](const Keys::Piece& piece, const Keys::Other& sought) {
                const Keys::Ascii& item = keys.ascii[piece.item];
                const int order = collator.compare(keys.TextOf(item), sought.text);
                return order != 0 ? (order < 0) == ascending : item.index < sought.index;
            });
        for (; next != place; ++next)
            sorted.push_back(keys.ascii[next->item].index);
        sorted.push_back(other.index);
    }
    for (; next != keys.sorted.cend(); ++next)
        sorted.push_back(keys.ascii[next->item].index);
    return sorted;
}

std::vector<int> NaturalOrder::Sorted(int count, const TextOf& textOf, bool ascending) const
{
    Keys keys;
    keys.ascii.reserve(static_cast<std::size_t>(count));
    keys.sorted.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        const std::wstring text = textOf(index);
        const std::size_t key = keys.keyBytes.size();
        if (asciiByCharacter && AppendKey(text, keys.keyBytes)) {
            const std::size_t start = keys.textBytes.size();
            keys.textBytes.append(text.begin(), text.end());
            keys.ascii.push_back({key, keys.keyBytes.size() - key, start, text.size(), index});
        } else {
            const QString other = pixmill::ToQString(text);
            keys.others.push_back({CollationKey(collator, other), other, index});
        }
    }
    // A text that is put in place by comparing costs several times what its sort key costs.
    if (keys.others.size() > keys.ascii.size() / 8) {
        for (const Keys::Ascii& item : keys.ascii) {
            const QString text = keys.TextOf(item);
            keys.others.push_back({CollationKey(collator, text), text, item.index});
        }
        keys.ascii.clear();
    }
    // So that the last key, too, can be read by eight bytes.
    keys.keyBytes.append(chunkSize, '\0');
    SortKeys(keys, ascending);
    SortOthers(keys, ascending);
    return Merged(keys, ascending);
}

} // namespace zetui::controls
