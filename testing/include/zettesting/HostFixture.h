#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zettesting/Environment.h>
#include <zettesting/TemporaryFolder.h>

namespace zettesting {

/// Fresh surroundings of a host for each test: a preferences folder and a runtime folder of its own (so that
/// tests may run side by side), the default debug database, the trace in `traceLines`, and an empty
/// main-thread queue.
class HostFixture : public ::testing::Test
{
  protected:
    HostFixture();
    ~HostFixture() override;

    TemporaryFolder folder;
    /// The folder `folder`/prefs. It exists.
    std::filesystem::path prefs;
    /// The lines "level category text" in order, as far as the volume was above 0. A test reads them without
    /// a lock, and must see to it that no thread is tracing then.
    std::shared_ptr<std::vector<std::string>> traceLines;

  private:
    ScopedEnvironment runtimeFolder;
    ScopedEnvironment debugDatabase;
    ScopedEnvironment trace;
};

} // namespace zettesting
