#include "skins/SkinColors.h"

#include <algorithm>
#include <cmath>

#include "skins/SkinRecord.h"

namespace zetui::skins {

namespace {

double RelativeLuminance(const pixmill::Color& color)
{
    const auto linear = [](std::uint8_t component) {
        const double value = component / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

} // namespace

const SkinColors& ColorsOf(Skin skin, bool dark)
{
    const SkinRecord& record = RecordOf(skin);
    return dark ? record.dark : record.light;
}

const SkinColors& CurrentColors()
{
    return ColorsOf(GetSkin(), IsDark());
}

double ContrastRatio(const pixmill::Color& one, const pixmill::Color& other)
{
    const auto [darker, lighter] = std::minmax({RelativeLuminance(one), RelativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace zetui::skins
