// Reads layout archives, and builds their nodes and controls without a screen.
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <zetui/application/Application.h>
#include <zetui/archives/NodeArchive.h>
#include <zetui/skins/Skins.h>

#include "FuzzTarget.h"

namespace {

struct Windows
{
    Windows() { zetfuzz::Require(zetui::ui::InitializeWindows(), "windows without a screen"); }
    ~Windows() { zetui::ui::TerminateWindows(); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Windows windows;
    try {
        const auto root = zetui::ui::LoadNodeArchive(zetfuzz::Text(data, size), "FUZZ", {});
        zetfuzz::Require(root && !root->UI_GetID().empty(), "the root is a view with an id");
        zetfuzz::Require(root->FindNodeForID(root->UI_GetID()) != nullptr, "a node is found by its id");
    } catch (const zetui::ui::archive_error& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("Layout archive \"FUZZ\", line "),
                         "the error names resource and line", error.what());
    }
    return 0;
}
