#include "archiveddialog/RememberedControls.h"

#include <exception>
#include <optional>
#include <sstream>
#include <vector>

#include <QWidget>

#include <zetcore/debug/Trace.h>
#include <zetcore/string/ParseNumber.h>
#include <zetui/archiveddialog/ControlStore.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetui::ui {

namespace {

using controls::UI_MultiColumnTree;
using controls::UI_MultiColumnTreeHeaderRow;

constexpr char maximised[] = "maximised";
constexpr char normal[] = "normal";

std::string WindowKey(const std::string& archive)
{
    return archive + "/window";
}

std::string StateOf(const QWidget& window)
{
    return window.isMaximized() ? maximised : normal;
}

bool MayBeMaximised(const QWidget& window)
{
    return window.windowFlags().testFlag(Qt::WindowMaximizeButtonHint);
}

/// Calls this for each list below the view that has an id and titles.
void ForEachHeader(const UI_SubView& view, const std::string& archive,
                   const std::function<void(UI_MultiColumnTreeHeaderRow&, const std::string& key)>& call)
{
    for (std::size_t i = 0; i < view.ChildCount(); ++i) {
        const auto child = view.GetChild(i);
        if (auto* const tree = dynamic_cast<UI_MultiColumnTree*>(child.get())) {
            if (tree->GetHeaderRow() && !tree->UI_GetID().empty())
                call(*tree->GetHeaderRow(), archive + "/" + tree->UI_GetID() + "/columns");
        } else if (const auto* const inner = dynamic_cast<UI_SubView*>(child.get())) {
            ForEachHeader(*inner, archive, call);
        }
    }
}

std::string OrderToText(const std::vector<unsigned>& order)
{
    std::string text;
    for (const unsigned id : order)
        text += (text.empty() ? "" : " ") + std::to_string(id);
    return text;
}

std::optional<std::vector<unsigned>> OrderFromText(const std::string& text)
{
    std::istringstream words(text);
    std::vector<unsigned> order;
    for (std::string word; words >> word;) {
        const auto id = zetcore::string::ParseNumber<unsigned>(word);
        if (!id)
            return std::nullopt;
        order.push_back(*id);
    }
    return order;
}

/// A window that remembers nothing is better than one that does not open or close.
void CallStore(const std::function<void(ControlStore&)>& call)
{
    const std::shared_ptr<ControlStore> store = GetControlStore();
    if (!store)
        return;
    try {
        call(*store);
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, "zetui", std::string("The control store failed: ") + error.what());
    }
}

} // namespace

void RememberedControls::Restore(UI_SubView& root, QWidget& window)
{
    ForEachHeader(root, archive, [this](UI_MultiColumnTreeHeaderRow& header, const std::string& key) {
        RestoreValue(key, OrderToText(header.GetColumnOrder()), [&header](const std::string& value) {
            const auto order = OrderFromText(value);
            return order && header.SetColumnOrder(*order);
        });
    });
    if (!MayBeMaximised(window))
        return;
    RestoreValue(WindowKey(archive), StateOf(window), [&window](const std::string& value) {
        if (value == maximised)
            window.setWindowState(window.windowState() | Qt::WindowMaximized);
        return value == maximised || value == normal;
    });
}

void RememberedControls::Remember(UI_SubView& root, const QWidget& window)
{
    ForEachHeader(root, archive, [this](UI_MultiColumnTreeHeaderRow& header, const std::string& key) {
        RememberValue(key, OrderToText(header.GetColumnOrder()));
    });
    if (MayBeMaximised(window))
        RememberValue(WindowKey(archive), StateOf(window));
}

void RememberedControls::RestoreValue(const std::string& key, const std::string& valueNow,
                                      const std::function<bool(const std::string& value)>& use)
{
    known[key] = valueNow;
    CallStore([&](ControlStore& store) {
        const std::string value = store.Read(key);
        if (value.empty())
            return;
        // A value that cannot be used is not what the control has, so that it is replaced.
        known[key] = value;
        if (!use(value))
            store.OnUnusable(key, value);
    });
}

void RememberedControls::RememberValue(const std::string& key, const std::string& valueNow)
{
    std::string& before = known[key];
    if (before == valueNow)
        return;
    before = valueNow;
    CallStore([&](ControlStore& store) { store.Write(key, valueNow); });
}

} // namespace zetui::ui
