#pragma once

#include <memory>

#include <QCollator>

namespace zetui::controls {

/// A text that has been made ready to be compared with many others, as the collator compares them.
class CollationKey
{
  public:
    CollationKey(const QCollator& collator, const QString& text);
    ~CollationKey();
    CollationKey(CollationKey&&) noexcept;
    CollationKey& operator=(CollationKey&&) noexcept;

    /// Less than, equal to or greater than 0. Both keys are of the same collator.
    int Compare(const CollationKey& other) const;

  private:
    struct Key;
    std::unique_ptr<Key> key;
};

} // namespace zetui::controls
