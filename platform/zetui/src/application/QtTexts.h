#pragma once

#include <mutex>
#include <string>

#include <QTranslator>

namespace zetui::ui {

/// Qt's own texts (in the file chooser, in the menus of fields, on standard buttons) in the language of the
/// string table that is loaded. It asks the table each time, so that a table may come at any time. Any
/// thread.
class QtTexts : public QTranslator
{
  public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int count) const override;

  private:
    mutable std::mutex mutex;
    /// The language of `texts`.
    mutable std::string language = "en";
    mutable QTranslator texts;
};

} // namespace zetui::ui
