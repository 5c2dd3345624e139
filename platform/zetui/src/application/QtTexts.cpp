#include "application/QtTexts.h"

#include <QLibraryInfo>
#include <QLocale>

#include <zetcore/config/Localizer.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>

#include "pixmill/QtConversions.h"

namespace zetui::ui {

namespace {

/// Our packages for Windows have the files beside the string tables. Elsewhere they are where Qt looks.
bool LoadQtTexts(QTranslator& texts, const std::string& language)
{
    const QString beside =
        pixmill::ToQString(zetcore::filesupport::commondirs::ExecutableDir().FullPath() + L"/lang");
    for (const QString& folder : {beside, QLibraryInfo::path(QLibraryInfo::TranslationsPath)})
        if (texts.load(QLocale(QString::fromStdString(language)), QStringLiteral("qtbase"),
                       QStringLiteral("_"), folder))
            return true;
    zetcore::debug::TraceLine(2, "zetui", "Qt's own texts stay English: there are none in " + language);
    return false;
}

} // namespace

QString QtTexts::translate(const char* context, const char* sourceText, const char* disambiguation,
                           int count) const
{
    const std::string wanted = zetcore::config::Localizer::Get().Localize("$$$/zetui/Language=en");
    const std::lock_guard lock(mutex);
    if (language != wanted) {
        language = wanted;
        loaded = false;
        // Qt's texts are English in the program.
        loaded = language != "en" && LoadQtTexts(texts, language);
    }
    return loaded ? texts.translate(context, sourceText, disambiguation, count) : QString();
}

} // namespace zetui::ui
