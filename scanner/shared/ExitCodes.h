#pragma once

namespace zetaudiofilterscan {

/// How the scanner ends. Hosts look at the connection, not at these; they are for people and for tests.
enum ExitCode : int
{
    /// The connection was closed, which is how a scan ends.
    exitConnectionClosed = 0,
    /// Started with arguments that it does not know.
    exitWrongUsage = 2,
    /// There is no port block: no host has started it.
    exitNoPortBlock = 3,
    /// It could not listen.
    exitCannotListen = 4,
    /// Nobody connected in time.
    exitNobodyConnected = 5,
    /// A plug-in brought it down: the reason is recorded.
    exitPluginFailed = 20,

    /// A worker ends with it: a plug-in has closed or replaced the channel to the supervisor.
    exitChannelLost = 91,
};

} // namespace zetaudiofilterscan
