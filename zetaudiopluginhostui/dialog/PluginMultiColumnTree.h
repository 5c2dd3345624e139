#pragma once

#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetaudiopluginhostui {

/// The plug-in list; a class of its own so that the dialog finds it by its type.
class PluginMultiColumnTree : public zetui::controls::UI_MultiColumnTree
{
  public:
    PluginMultiColumnTree();

  protected:
    ~PluginMultiColumnTree() override;
};

} // namespace zetaudiopluginhostui
