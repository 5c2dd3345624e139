#pragma once

#include "tree/NaturalOrder.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

/// The tests of the natural order sort these texts.
namespace zetui::controls {

using Texts = std::vector<std::wstring>;

inline const QLocale english(QLocale::English, QLocale::UnitedStates);

inline std::vector<int> Sorted(const NaturalOrder& order, const Texts& texts, bool ascending = true)
{
    return order.Sorted(
        static_cast<int>(texts.size()), [&](int index) { return texts[static_cast<std::size_t>(index)]; },
        ascending);
}

inline Texts InOrder(const NaturalOrder& order, const Texts& texts, bool ascending = true)
{
    Texts sorted;
    for (const int index : Sorted(order, texts, ascending))
        sorted.push_back(texts[static_cast<std::size_t>(index)]);
    return sorted;
}

/// The order in which the collator alone sorts.
inline std::vector<int> SortedByCollator(const QLocale& locale, const Texts& texts)
{
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<int> indexes(texts.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    std::stable_sort(indexes.begin(), indexes.end(), [&](int left, int right) {
        return collator.compare(QString::fromStdWString(texts[static_cast<std::size_t>(left)]),
                                QString::fromStdWString(texts[static_cast<std::size_t>(right)])) < 0;
    });
    return indexes;
}

inline Texts RandomTexts(const std::wstring& alphabet, int count, std::size_t longest)
{
    std::mt19937 random(20240229);
    Texts texts;
    for (int i = 0; i < count; ++i) {
        std::wstring text;
        for (std::size_t length = random() % (longest + 1); length > 0; --length)
            text.push_back(alphabet[random() % alphabet.size()]);
        texts.push_back(text);
    }
    return texts;
}

} // namespace zetui::controls
