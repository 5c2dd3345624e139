#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <QCollator>
#include <QLocale>

namespace zetui::controls {

/// The order in which people expect names and versions: letters by the user's locale, case apart, accented
/// ones near their letter, numbers by value ("2.10" after "2.9"). Main thread.
///
/// The collator decides. Texts of ASCII characters alone, which most are, are sorted by keys of our own in
/// which each character has the place that the collator gives it: the same order at a fraction of the time.
class NaturalOrder
{
  public:
    explicit NaturalOrder(const QLocale& locale = UserLocale());

    using TextOf = std::function<std::wstring(int index)>;
    /// The indexes 0 to `count` - 1 in the order of their texts; equal texts by index, in both directions.
    /// Each text is asked for once.
    std::vector<int> Sorted(int count, const TextOf& textOf, bool ascending) const;

    /// False in locales in which some pair of ASCII letters sorts as a letter of its own.
    bool SortsAsciiByCharacter() const noexcept { return asciiByCharacter; }

    /// The system's; English where that is the "C" locale, which knows neither case nor numbers.
    static QLocale UserLocale();

  private:
    struct Keys;
    void MakeRanks();
    bool AsciiPairsKeepTheirPlace() const;
    bool AppendKey(std::wstring_view text, std::string& key) const;
    void SortKeys(Keys& keys, bool ascending) const;
    void SortOthers(Keys& keys, bool ascending) const;
    std::vector<int> Merged(const Keys& keys, bool ascending) const;

    QCollator collator;
    /// The place of each ASCII character among the others, from 1; 0 for those that do not count.
    std::array<std::uint8_t, 128> ranks{};
    bool asciiByCharacter = false;
};

} // namespace zetui::controls
