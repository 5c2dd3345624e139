#include <zetui/archiveddialog/ControlStore.h>

#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/threads/MainThread.h>

namespace zetui::ui {

namespace {

std::shared_ptr<ControlStore>& TheStore()
{
    static std::shared_ptr<ControlStore> store;
    return store;
}

} // namespace

ControlStore::~ControlStore() = default;

void ControlStore::OnUnusable(const std::string& key, const std::string& value)
{
    zetcore::debug::TraceLine(3, "zetui",
                              "The control store's value of " + key + " cannot be used: " + value);
}

void SetControlStore(std::shared_ptr<ControlStore> store)
{
    zetcore::threads::AssertMainThread();
    TheStore() = std::move(store);
}

std::shared_ptr<ControlStore> GetControlStore()
{
    zetcore::threads::AssertMainThread();
    return TheStore();
}

} // namespace zetui::ui
