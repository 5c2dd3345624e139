#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zettesting/Environment.h>
#include <zettesting/TemporaryFolder.h>

namespace zettesting {

/// A host's surroundings, fresh for each test: an own preferences folder, an own runtime folder (so that
/// tests may run side by side), default debug database, trace caught in `traceLines`, an empty main-thread
/// queue.
class HostFixture : public ::testing::Test
{
  protected:
    HostFixture();
    ~HostFixture() override;

    TemporaryFolder folder;
    /// `folder`/prefs, which exists.
    std::filesystem::path prefs;
    /// "level category text", in order; only what was traced while the volume was above 0. Lock-free reading
    /// is the test's business.
    std::shared_ptr<std::vector<std::string>> traceLines;

  private:
    ScopedEnvironment runtimeFolder;
    ScopedEnvironment debugDatabase;
    ScopedEnvironment trace;
};

} // namespace zettesting
