#include "filesupport/paths/DriveState.h"

#include <gtest/gtest.h>

namespace zetcore::filesupport {
namespace {

TEST(DriveState, IsAwayByTheErrorOrByThePlaceWhereItWouldBeMounted)
{
    struct Case
    {
        const char* folder;
        std::errc error;
        bool away;
    };
    constexpr auto gone = std::errc::no_such_file_or_directory;
    for (const Case& each : {Case{"/no-such-folder/vst", gone, false},
                             {"/usr/lib/no-such-folder", gone, false},
                             {"/mnt/no-such-drive", gone, true},
                             {"/mnt/no-such-drive/plug-ins/vst", gone, true},
                             {"/media/no-such-user/drive/vst", gone, true},
                             {"/usr/lib", std::errc::io_error, true},
                             {"/usr/lib", std::errc::host_unreachable, true},
                             {"/usr/lib", std::errc::not_connected, true},
                             {"/usr/lib/file/x", std::errc::not_a_directory, false}})
        EXPECT_EQ(IsDriveAway(each.folder, std::make_error_code(each.error)), each.away) << each.folder;
}

} // namespace
} // namespace zetcore::filesupport
