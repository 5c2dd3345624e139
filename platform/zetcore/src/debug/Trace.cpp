#include <zetcore/debug/Trace.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <map>
#include <memory>
#include <mutex>

#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/ResetTrace.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "debug/TraceConfiguration.h"
#include "filesupport/content/AppendHandle.h"
#include "utility/Immortal.h"

namespace zetcore::debug {

namespace {

struct TraceState
{
    std::atomic<bool> configured{false};
    std::atomic<int> volume{0};
    std::atomic<int> changes{0};

    /// Guards what follows.
    std::mutex mutex;
    std::map<std::string, bool, std::less<>> categories;
    std::unique_ptr<filesupport::AppendHandle> file;
    /// It is shared, so that it can be called without the lock.
    std::shared_ptr<const TraceSink> sink;
};

void WriteToStandardError(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
}

/// The caller holds the state's lock.
void ConfigureFromEnvironment(TraceState& state)
{
    const auto text = utility::EnvironmentVariable("ZET_TRACE");
    if (!text)
        return;
    TraceConfiguration configuration = ParseTraceConfiguration(string::UTF16to8(*text));
    state.volume = configuration.volume.value_or(0);
    for (const std::string& category : configuration.off)
        state.categories[category] = false;
    try {
        if (!configuration.file.empty())
            state.file = std::make_unique<filesupport::AppendHandle>(string::UTF8to16(configuration.file));
    } catch (const std::exception& error) {
        configuration.problems.emplace_back(error.what());
    }
    for (const std::string& problem : configuration.problems)
        WriteToStandardError("ZET_TRACE: " + problem + "\n");
}

/// Returns the state, which is configured from the environment at its first use.
TraceState& State()
{
    auto& state = utility::Immortal<TraceState>();
    if (!state.configured.load(std::memory_order_acquire)) {
        const std::lock_guard lock(state.mutex);
        if (!state.configured.load(std::memory_order_relaxed)) {
            ConfigureFromEnvironment(state);
            state.configured.store(true, std::memory_order_release);
        }
    }
    return state;
}

} // namespace

int GetMasterTraceVolume()
{
    return State().volume.load(std::memory_order_relaxed);
}

void SetMasterTraceVolume(int volume)
{
    TraceState& state = State();
    state.volume = std::clamp(volume, 0, 9);
    ++state.changes;
}

int TraceChangeCount()
{
    return State().changes.load(std::memory_order_acquire);
}

bool TraceEnabled(std::string_view category, int level, bool defaultOn)
{
    TraceState& state = State();
    const int volume = state.volume.load(std::memory_order_relaxed);
    if (volume == 0 || level > volume)
        return false;
    const std::lock_guard lock(state.mutex);
    const auto found = state.categories.find(category);
    return found == state.categories.end() ? defaultOn : found->second;
}

void SetTraceCategoryEnabled(std::string_view category, bool enabled)
{
    TraceState& state = State();
    const std::lock_guard lock(state.mutex);
    state.categories.insert_or_assign(std::string(category), enabled);
    ++state.changes;
}

void Trace(int level, std::string_view category, std::string_view text)
{
    TraceState& state = State();
    try {
        if (DeferredTrace::Keep(level, category, text))
            return;
        std::shared_ptr<const TraceSink> sink;
        {
            const std::lock_guard lock(state.mutex);
            sink = state.sink;
            if (!sink && state.file)
                state.file->Write(text);
            else if (!sink)
                WriteToStandardError(text);
        }
        if (sink)
            (*sink)(level, category, text);
    } catch (const std::exception&) {
        // A full disk under the trace file must not disturb the work that is being traced.
    }
}

void TraceLine(int level, std::string_view category, std::string_view text)
{
    if (TraceEnabled(category, level, true))
        Trace(level, category, std::string(text) + "\r\n");
}

void SetTraceFile(const std::wstring& path)
{
    auto opened = path.empty() ? nullptr : std::make_unique<filesupport::AppendHandle>(path);
    TraceState& state = State();
    const std::lock_guard lock(state.mutex);
    state.file = std::move(opened);
    ++state.changes;
}

void SetTraceSink(TraceSink sink)
{
    auto shared = sink ? std::make_shared<const TraceSink>(std::move(sink)) : nullptr;
    TraceState& state = State();
    const std::lock_guard lock(state.mutex);
    // The old sink, and all that it holds, is destroyed after the lock is gone.
    state.sink.swap(shared);
    ++state.changes;
}

void ResetTrace()
{
    std::shared_ptr<const TraceSink> dropped;
    TraceState& state = State();
    const std::lock_guard lock(state.mutex);
    state.volume = 0;
    state.categories.clear();
    state.file.reset();
    state.sink.swap(dropped);
    ++state.changes;
    // The next use reads the environment again.
    state.configured.store(false, std::memory_order_release);
}

} // namespace zetcore::debug
