#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterhost {

/// A scan's finding about a module.
enum class ModuleStatus
{
    /// It loads; the only status that the registry's iteration shows.
    Working,
    /// It is a plug-in but gave none (its entry function returned nothing, for example).
    Failed,
    /// Its file is no plug-in for this process.
    NotAPlugin,
    /// Left out on purpose (unsupported, or a shell that is there in a newer technology).
    Skipped,
    /// Known, to be scanned by the next scan for new plug-ins.
    Unscanned,
    /// Its file may not be read. Every scan for new plug-ins tries it again, whatever its size and time.
    Unreadable,
};

/// True when no list shows such a record: its file is no plug-in for this process, or was left out on
/// purpose.
constexpr bool IsPassedOver(ModuleStatus status) noexcept
{
    return status == ModuleStatus::NotAPlugin || status == ModuleStatus::Skipped;
}

/// One known plug-in module, or one sub-plug-in of a shell. A plain record; the registry hands out shared
/// pointers to it, used on the main thread. Texts are for showing (valid Unicode); the path is in the
/// locator.
class ZETAUDIOFILTERHOST_API PluginModuleInfo
{
  public:
    PluginModuleInfo() = default;
    explicit PluginModuleInfo(PluginLocator moduleLocator) : locator(std::move(moduleLocator)) {}

    const PluginLocator& GetLocator() const noexcept { return locator; }
    const std::wstring& GetName() const noexcept { return name; }
    const std::wstring& GetProduct() const noexcept { return product; }
    const std::wstring& GetVersionString() const noexcept { return version; }
    const std::wstring& GetVendor() const noexcept { return vendor; }
    const std::wstring& GetCategory() const noexcept { return category; }
    /// VST2: the 32-bit id in decimal; VST3: the 32 hexadecimal digits of the class id; CLAP: the plug-in's
    /// id.
    const std::wstring& GetUniqueId() const noexcept { return uniqueId; }
    /// The number that the plug-in itself gives for its version; 0 when it gives none.
    std::int64_t GetNumericVersion() const noexcept { return numericVersion; }
    bool IsEnabled() const noexcept { return enabled; }
    void SetEnabled(bool value) noexcept
    {
        if (enabled == value)
            return;
        enabled = value;
        if (changes)
            changes->enabled.fetch_add(1, std::memory_order_relaxed);
    }
    /// True when the module offers at least one effect that is not an instrument.
    bool HasAnyNonSynthEffect() const noexcept { return hasEffect; }
    bool HasAnySynth() const noexcept { return hasSynth; }
    ModuleStatus GetStatus() const noexcept { return status; }
    /// Why the status is not `Working`; UTF-8, for people.
    const std::string& GetReason() const noexcept { return reason; }
    /// The module file's size and time of change (nanoseconds since 1970, UTC) when it was scanned; 0 when
    /// unknown.
    std::uint64_t GetFileSize() const noexcept { return fileSize; }
    std::int64_t GetFileTime() const noexcept { return fileTime; }
    /// In a scan's result: this sub-component was scanned alone, so the result does not speak for the other
    /// ones of its module. The registry's records do not have it.
    bool IsScannedAlone() const noexcept { return scannedAlone; }

    void SetLocator(PluginLocator value) { Change(locator, std::move(value)); }
    void SetName(std::wstring value) { Change(name, std::move(value)); }
    void SetProduct(std::wstring value) { Change(product, std::move(value)); }
    void SetVersionString(std::wstring value) { Change(version, std::move(value)); }
    void SetVendor(std::wstring value) { Change(vendor, std::move(value)); }
    void SetCategory(std::wstring value) { Change(category, std::move(value)); }
    void SetUniqueId(std::wstring value) { Change(uniqueId, std::move(value)); }
    void SetNumericVersion(std::int64_t value) { Change(numericVersion, value); }
    void SetHasAnyNonSynthEffect(bool value) { Change(hasEffect, value); }
    void SetHasAnySynth(bool value) { Change(hasSynth, value); }
    void SetStatus(ModuleStatus value) { Change(status, value); }
    void SetReason(std::string value) { Change(reason, std::move(value)); }
    void SetScannedAlone(bool value) { scannedAlone = value; }
    void SetFileStamp(std::uint64_t size, std::int64_t time)
    {
        Change(fileSize, size);
        Change(fileTime, time);
    }

    /// Attributes and child elements of a newer version's file, kept so that saving does not lose them.
    struct Unknown
    {
        std::vector<std::pair<std::string, std::string>> attributes;
        std::string children;

        bool IsEmpty() const noexcept { return attributes.empty() && children.empty(); }
    };
    const Unknown& GetUnknown() const noexcept { return unknown; }
    void SetUnknown(Unknown value) { unknown = std::move(value); }

    /// The registry counts the changes of its records, so that a save can tell at once that no enabled flag
    /// has changed, and whoever keeps what it has read of the records that it still holds.
    struct Changes
    {
        std::atomic<std::uint64_t> enabled{0};
        /// Counts the changes of everything else, except of what is unknown.
        std::atomic<std::uint64_t> content{0};
    };
    void CountChangesIn(std::shared_ptr<Changes> counter) { changes = std::move(counter); }

  private:
    template<typename T>
    void Change(T& member, T value)
    {
        member = std::move(value);
        if (changes)
            changes->content.fetch_add(1, std::memory_order_relaxed);
    }

    PluginLocator locator;
    std::wstring name, product, version, vendor, category, uniqueId;
    std::string reason;
    std::int64_t numericVersion = 0;
    std::uint64_t fileSize = 0;
    std::int64_t fileTime = 0;
    ModuleStatus status = ModuleStatus::Working;
    bool enabled = true;
    bool hasEffect = false;
    bool hasSynth = false;
    bool scannedAlone = false;
    Unknown unknown;
    std::shared_ptr<Changes> changes;
};

} // namespace zetaudiofilterhost
