#pragma once

#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetaudiopluginhostui {

/// The tree of the plug-in list. It has a class of its own so that the dialog finds it by its type.
class PluginMultiColumnTree : public zetui::controls::UI_MultiColumnTree
{
  public:
    PluginMultiColumnTree();

  protected:
    ~PluginMultiColumnTree() override;
};

} // namespace zetaudiopluginhostui
