#pragma once

#include <boost/signals2/signal.hpp>

namespace zetcore::signals {

/// A thread-safe signal without result. Slots run on the thread that raises it, in the order of connection.
template<typename... Arguments>
using Signal = boost::signals2::signal<void(Arguments...)>;

/// Disconnects when it is destroyed. Movable, not copyable.
using ScopedConnection = boost::signals2::scoped_connection;

} // namespace zetcore::signals
