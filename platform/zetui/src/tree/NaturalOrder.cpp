#include "tree/NaturalOrder.h"

#include <algorithm>

#include "pixmill/QtConversions.h"
#include "tree/CollationKey.h"

namespace zetui::controls {

namespace {

/// A number's length is one byte of its key. A longer run of digits counts as several numbers.
constexpr std::size_t longestNumber = 200;
constexpr std::size_t chunkSize = 8;

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// Up to eight bytes of a key as one number, so that one comparison of numbers does for eight of bytes. The
/// first byte is the highest of the number; that makes the numbers compare as the bytes do. Where fewer than
/// eight are left, the mask clears the low bytes, which belong to the next key: a key that ends sorts before
/// one that goes on, because no key has a byte of 0.
std::uint64_t ChunkOf(const char* bytes, std::size_t size)
{
    std::uint64_t chunk = 0;
    for (std::size_t i = 0; i < chunkSize; ++i)
        chunk = chunk << 8 | static_cast<unsigned char>(bytes[i]);
    return size >= chunkSize ? chunk : chunk & ~(~std::uint64_t{0} >> (8 * size));
}

/// A key that ends within the chunk has left its lowest byte 0.
bool EndsIn(std::uint64_t chunk)
{
    return (chunk & 0xFF) == 0;
}

} // namespace

/// The texts of one sort.
struct NaturalOrder::Keys
{
    struct Ascii
    {
        std::size_t key, keySize, text, textSize;
        int index;
    };
    /// The sort moves these small records: a piece of a key, and the place of the whole key in `ascii`.
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
        // Beside a letter, because compared with an empty text every character counts.
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

/// Two letters may sort as a letter of their own. Such a pair stands at another place among the pairs with
/// the same first letter than its second letter does among the letters.
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

/// Appends a text's key. Keys compare byte by byte as the collator compares their texts: each character is
/// its rank among the characters, and those that do not count are left out. A number is the rank of the
/// digits, one more than how many digits it has without leading zeros, and these digits, so that longer
/// numbers are larger, and equally long ones compare digit by digit. A text with other characters than ASCII
/// gives false and no key.
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

/// Sorts the keys by eight bytes at a time, from the front (a radix sort with large digits). A range of keys
/// is sorted by the numbers that its next eight bytes make. The keys that are equal in them, and whose bytes
/// go on, are a new range that is sorted by the eight bytes after them. So most comparisons are of two
/// numbers that stand beside each other in memory, and names that begin alike are not compared from their
/// beginning each time. Equal keys stay in the order of their items, in both directions. The ranges that
/// still wait are in a list, and not on the stack, because a key may be as long as its text.
///
/// The collator's own keys would need none of this. With them, a list takes about twice as long to sort by
/// name, which is longer than the lists of Qt take.
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
    // Putting a text in its place by comparing costs several times what its sort key costs. So with many such
    // texts, all get sort keys.
    if (keys.others.size() > keys.ascii.size() / 8) {
        for (const Keys::Ascii& item : keys.ascii) {
            const QString text = keys.TextOf(item);
            keys.others.push_back({CollationKey(collator, text), text, item.index});
        }
        keys.ascii.clear();
    }
    // The last key, too, is read by eight bytes.
    keys.keyBytes.append(chunkSize, '\0');
    SortKeys(keys, ascending);
    SortOthers(keys, ascending);
    return Merged(keys, ascending);
}

} // namespace zetui::controls
