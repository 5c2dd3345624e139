#include "application/AccessibleFactories.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace zetui::ui {

namespace {

std::vector<QAccessible::InterfaceFactory>& Used()
{
    static auto& factories = *new std::vector<QAccessible::InterfaceFactory>;
    return factories;
}

} // namespace

void UseAccessibleFactory(QAccessible::InterfaceFactory factory)
{
    std::vector<QAccessible::InterfaceFactory>& used = Used();
    if (std::find(used.begin(), used.end(), factory) == used.end())
        used.push_back(factory);
    // Qt forgets the factories with its application object, and knows those that it has already.
    QAccessible::installFactory(factory);
}

void ForgetAccessibleFactories()
{
    for (const auto factory : std::exchange(Used(), {}))
        QAccessible::removeFactory(factory);
}

} // namespace zetui::ui
