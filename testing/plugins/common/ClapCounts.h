#pragma once

namespace zettestplugin {

/// For tests to look at: how many calls of init have no deinit yet, and how many instances there are.
struct ClapCounts
{
    int entered = 0, instances = 0;
};
ClapCounts& Counts() noexcept;

} // namespace zettestplugin
