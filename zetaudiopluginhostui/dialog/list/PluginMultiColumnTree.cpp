#include "dialog/list/PluginMultiColumnTree.h"

namespace zetaudiopluginhostui {

PluginMultiColumnTree::PluginMultiColumnTree() : UI_MultiColumnTree(1, GetDefaultRowHeight()) {}

PluginMultiColumnTree::~PluginMultiColumnTree() = default;

} // namespace zetaudiopluginhostui
