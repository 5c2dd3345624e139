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
    /// Recursive, because Qt may ask for a text of its own while it loads the texts: an error of the file
    /// system's has a message that can be translated.
    mutable std::recursive_mutex mutex;
    /// The language that `texts` was last loaded in.
    mutable std::string language = "en";
    /// True once `texts` holds the texts of `language`. Qt has no texts for some languages.
    mutable bool loaded = false;
    mutable QTranslator texts;
};

} // namespace zetui::ui
