#include "tree/CollationKey.h"

namespace zetui::controls {

struct CollationKey::Key
{
    QCollatorSortKey sortKey;
};

CollationKey::CollationKey(const QCollator& collator, const QString& text)
    : key(std::make_unique<Key>(Key{collator.sortKey(text)}))
{}

CollationKey::~CollationKey() = default;
CollationKey::CollationKey(CollationKey&&) noexcept = default;
CollationKey& CollationKey::operator=(CollationKey&&) noexcept = default;

int CollationKey::Compare(const CollationKey& other) const
{
    return key->sortKey.compare(other.key->sortKey);
}

} // namespace zetui::controls
