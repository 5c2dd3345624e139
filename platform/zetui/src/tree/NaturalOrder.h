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

/// The order in which people expect names and versions: letters by the user's locale, without regard to case,
/// accented ones near their letter, and numbers by value ("2.10" after "2.9"). Main thread.
///
/// The collator decides. Most texts have ASCII characters alone. These are sorted by keys of our own, in
/// which each character has the place that the collator gives it: the order is the same and costs a fraction
/// of the time. Other texts are sorted by the collator's keys, and put between them.
class NaturalOrder
{
  public:
    explicit NaturalOrder(const QLocale& locale = UserLocale());

    using TextOf = std::function<std::wstring(int index)>;
    /// The indexes 0 to `count` - 1 in the order of their texts. Equal texts are in the order of their
    /// indexes, in both directions. Each text is asked for once.
    std::vector<int> Sorted(int count, const TextOf& textOf, bool ascending) const;

    /// False in a locale in which some pair of ASCII letters sorts as a letter of its own.
    bool SortsAsciiByCharacter() const noexcept { return asciiByCharacter; }

    /// The system's locale. It is English where the system's is "C", which knows neither case nor numbers.
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
    /// The rank of each ASCII character among the others, from 1. It is 0 for those that do not count.
    std::array<std::uint8_t, 128> ranks{};
    bool asciiByCharacter = false;
};

} // namespace zetui::controls
