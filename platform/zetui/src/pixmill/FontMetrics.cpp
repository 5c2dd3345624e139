#include <cmath>
#include <map>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPointer>
#include <QTextBoundaryFinder>
#include <zetui/pixmill/Pixmill.h>

#include "pixmill/QtConversions.h"
#include "pixmill/TextWidths.h"

namespace zetui::pixmill {

namespace {

/// Asking the system for a font costs more than measuring a text, and lists measure thousands. The cache is a
/// child of the application object, because fonts must not outlive it.
class WidthsCache : public QObject
{
  public:
    explicit WidthsCache(QGuiApplication* application) : QObject(application)
    {
        connect(application, &QGuiApplication::fontDatabaseChanged, this, [this] { families.clear(); });
    }
    std::map<std::pair<std::string, float>, TextWidths> byFont;
    /// True for a family that the system has. Asking the system takes long.
    std::map<std::string, bool> families;
};

WidthsCache& Cache()
{
    /// Deletes the cache when this library is unloaded before the application ends.
    struct Holder
    {
        ~Holder() { delete cache.data(); }
        QPointer<WidthsCache> cache;
    };
    static Holder holder;
    if (!holder.cache)
        holder.cache = new WidthsCache(qGuiApp);
    return *holder.cache;
}

const TextWidths& WidthsOf(const Font& font)
{
    auto& byFont = Cache().byFont;
    // The application's font may change, so the name is looked up each time.
    const std::pair key(font.name.empty() ? DefaultFontName() : font.name, font.size);
    const auto found = byFont.find(key);
    return found != byFont.end() ? found->second : byFont.emplace(key, ToQt(font)).first->second;
}

bool CanMeasure()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

bool HasFamily(const std::string& name)
{
    auto& families = Cache().families;
    const auto found = families.find(name);
    if (found != families.end())
        return found->second;
    const bool has =
        !name.empty() &&
        QFontDatabase::hasFamily(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    return families.emplace(name, has).first->second;
}

/// The places where a text may be cut. They are never inside what is read as one character.
std::vector<qsizetype> CharacterStarts(const QString& text)
{
    std::vector<qsizetype> starts;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype at = 0; at >= 0 && at < text.size(); at = finder.toNextBoundary())
        starts.push_back(at);
    starts.push_back(text.size());
    return starts;
}

bool IsPath(const std::wstring& text)
{
    const bool hasDrive = text.size() > 2 && text[1] == L':' && (text[2] == L'\\' || text[2] == L'/');
    return text.starts_with(L'/') || text.starts_with(L"\\\\") || hasDrive;
}

/// The text with an ellipsis and this many of its characters.
QString Shortened(const QString& text, const std::vector<qsizetype>& starts, TextTruncation truncation,
                  std::size_t kept)
{
    const std::size_t count = starts.size() - 1;
    std::size_t head = kept;
    if (truncation == TextTruncation::Beginning)
        head = 0;
    else if (truncation == TextTruncation::Middle)
        head = (kept + 1) / 2;
    return text.left(starts[head]) + QChar(0x2026) + text.mid(starts[count - (kept - head)]);
}

} // namespace

std::string ValidateFontName(const std::string& name)
{
    if (!CanMeasure())
        return name;
    return HasFamily(name) ? name : DefaultFontName();
}

float GetTextWidth(const Font& font, const std::wstring& text)
{
    if (text.empty() || !CanMeasure())
        return 0;
    return static_cast<float>(WidthsOf(font).WidthOf(text));
}

std::wstring TruncateString(const Font& font, const std::wstring& text, TextTruncation truncation,
                            float width)
{
    if (truncation == TextTruncation::Never || text.empty() || !CanMeasure())
        return text;
    // Many paths begin alike, and their ends tell them apart.
    if (truncation == TextTruncation::End && IsPath(text))
        truncation = TextTruncation::Middle;
    const TextWidths& widths = WidthsOf(font);
    if (widths.WidthOf(text) <= static_cast<double>(width))
        return text;

    const QFontMetricsF& metrics = widths.Metrics();
    const auto fits = [&](const QString& candidate) {
        return metrics.horizontalAdvance(candidate) <= static_cast<qreal>(width);
    };
    const QString shown = DisplayText(text);
    const std::vector<qsizetype> starts = CharacterStarts(shown);
    std::size_t fitting = 0, tooMany = starts.size() - 1;
    while (fitting + 1 < tooMany) {
        const std::size_t middle = (fitting + tooMany) / 2;
        (fits(Shortened(shown, starts, truncation, middle)) ? fitting : tooMany) = middle;
    }
    const QString shortened = Shortened(shown, starts, truncation, fitting);
    return fits(shortened) ? shortened.toStdWString() : std::wstring();
}

float GetFontBaseline(const Font& font, float cellHeight)
{
    if (!CanMeasure())
        return cellHeight;
    const QFontMetricsF& metrics = WidthsOf(font).Metrics();
    const qreal height = metrics.ascent() + metrics.descent();
    // The baseline is on a whole pixel, where glyphs are sharp.
    return static_cast<float>(std::round((static_cast<qreal>(cellHeight) - height) / 2 + metrics.ascent()));
}

} // namespace zetui::pixmill
