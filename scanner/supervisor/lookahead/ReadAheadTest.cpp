#include "supervisor/lookahead/ReadAhead.h"

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

using ReadAheadTest = zettesting::HostFixture;

TEST_F(ReadAheadTest, WhatCannotBeReadIsPassedOver)
{
    zetcore::debug::SetMasterTraceVolume(9);
    std::filesystem::create_directories(folder / "folder.vst3" / "Contents");
    zettesting::WriteAll(folder / "empty.so", "");
    zettesting::WriteAll(folder / "short.so", "x");
    for (const char* name : {"missing.so", "folder.vst3", "empty.so", "short.so", "short.so/below.so"}) {
        ReadAhead({TechnologyType::VST, zettesting::ToWide(folder / name)});
        ReadAhead({TechnologyType::VST3, zettesting::ToWide(folder / name)});
    }
    ReadAhead({TechnologyType::VST, std::wstring(5000, L'x')});
    ReadAhead({TechnologyType::VST, std::wstring(L"a\0b", 3)});
    ReadAhead({TechnologyType::AU, L"no path"});
    ReadAhead({});
    EXPECT_THAT(*traceLines, testing::IsEmpty());
}

} // namespace
} // namespace zetaudiofilterscan
