#include "archives/Adapters.h"

#include <algorithm>
#include <array>

#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetui::ui {

namespace {

using NodePtr = utility::IntrusivePtr<UI_Node>;

template<typename Node>
NodePtr Make()
{
    return utility::MakeIntrusive<Node>();
}

NodePtr MakeTree()
{
    const auto tree = utility::MakeIntrusive<controls::UI_MultiColumnTree>(
        1U, controls::UI_MultiColumnTree::GetDefaultRowHeight());
    tree->Init({});
    return tree;
}

NodePtr MakeSearchBox()
{
    return utility::MakeIntrusive<controls::UI_SearchBox>(false, false);
}

struct Adapter
{
    std::string_view className;
    NodePtr (*make)();
};

constexpr std::array adapters = {
    Adapter{"UI_Checkbox", Make<controls::UI_Checkbox>},
    Adapter{"UI_ClearButtonTextEdit", Make<controls::UI_ClearButtonTextEdit>},
    Adapter{"UI_MultiColumnTree", MakeTree},
    Adapter{"UI_Node", Make<UI_Node>},
    Adapter{"UI_SearchBox", MakeSearchBox},
    Adapter{"UI_StaticText", Make<controls::UI_StaticText>},
    Adapter{"UI_SubView", Make<UI_SubView>},
    Adapter{"UI_TextButton", Make<controls::UI_TextButton>},
    Adapter{"UI_TextEdit", Make<controls::UI_TextEdit>},
};

} // namespace

NodePtr MakeNodeOfAdapter(std::string_view className)
{
    const auto* const found =
        std::find_if(adapters.begin(), adapters.end(),
                     [className](const Adapter& adapter) { return adapter.className == className; });
    return found == adapters.end() ? nullptr : found->make();
}

} // namespace zetui::ui
