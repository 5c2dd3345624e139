#include <algorithm>

#include <QKeySequence>
#include <QVariant>
#include <QWidget>

#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_SubView.h>

#include "archiveddialog/Mnemonics.h"
#include "controls/OwnText.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"

namespace zetui::ui {

namespace {

/// A control with a text that the window shows.
struct Labelled
{
    QWidget* widget;
    MnemonicText text;
    bool goesWithout;
};

void Add(UI_Node& node, std::span<const UI_Node* const> without, std::vector<Labelled>& found)
{
    QWidget* const widget = WidgetOf(&node);
    if (!widget)
        return;
    controls::TakeMnemonicAway(*widget);
    const std::wstring text = pixmill::ToWide(controls::OwnText(*widget));
    const std::wstring original =
        pixmill::ToWide(widget->property(controls::kOriginalTextProperty).toString());
    if (!text.empty())
        found.push_back(
            {widget, {text, original}, std::find(without.begin(), without.end(), &node) != without.end()});
}

void Collect(UI_SubView& view, std::span<const UI_Node* const> without, std::vector<Labelled>& found)
{
    for (std::size_t i = 0; i < view.ChildCount(); ++i) {
        UI_Node* const node = view.GetChild(i).get();
        if (dynamic_cast<controls::UI_TextButton*>(node) || dynamic_cast<controls::UI_Checkbox*>(node)) {
            Add(*node, without, found);
        } else if (auto* const label = dynamic_cast<controls::UI_StaticText*>(node)) {
            const auto next = view.GetChild(i + 1);
            if (!dynamic_cast<controls::UI_TextEdit*>(next.get()))
                continue;
            label->SetBuddy(next.get());
            Add(*node, without, found);
        } else if (auto* const inner = dynamic_cast<UI_SubView*>(node)) {
            Collect(*inner, without, found);
        }
    }
}

} // namespace

void AssignMnemonics(UI_SubView& root, std::span<const UI_Node* const> withoutMnemonic)
{
    // The platform says that it has none by giving none.
    if (QKeySequence::mnemonic(QStringLiteral("&A")).isEmpty())
        return;
    std::vector<Labelled> labelled;
    Collect(root, withoutMnemonic, labelled);
    std::erase_if(labelled, [](const Labelled& each) { return each.goesWithout; });
    std::vector<MnemonicText> texts;
    for (const Labelled& each : labelled)
        texts.push_back(each.text);
    const std::vector<std::optional<Mnemonic>> chosen = ChooseMnemonics(texts);
    for (std::size_t i = 0; i < labelled.size(); ++i) {
        if (chosen[i])
            controls::ShowWithMnemonic(*labelled[i].widget,
                                       pixmill::ToQString(MarkMnemonic(texts[i].text, *chosen[i])));
    }
}

} // namespace zetui::ui
