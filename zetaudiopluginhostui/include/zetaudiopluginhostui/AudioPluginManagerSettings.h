#pragma once

#include <cstdint>

#include <zetcore/geom/RectT.h>

namespace zetaudiopluginhostui {

/// The plug-in manager dialog remembers these from one opening to the next. The host owns them and keeps them
/// between runs; the module never stores them. The record is trivially copyable.
struct AudioPluginManagerSettings
{
    /// True when a scan that is started from the dialog scans known plug-ins again.
    bool rescanExisting = false;
    /// The sort column of the plug-in list. 0 means that no sort was saved: the list keeps its own default.
    std::uint32_t sortColumn = 0;
    /// Has no meaning when `sortColumn` is 0.
    bool sortAscending = false;
    /// Belongs to the host. The module copies it, and neither reads nor writes it.
    bool hostFlag = true;
    /// The window's last frame. It is applied only when width and height are both at least 1.
    zetcore::geom::RectT<int> dialogBounds;
};

} // namespace zetaudiopluginhostui
