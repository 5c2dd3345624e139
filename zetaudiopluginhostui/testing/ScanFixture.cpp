#include "testing/ScanFixture.h"

#include <algorithm>
#include <fstream>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/serialization/Value.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetmarshal/JsonValue.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/Patience.h>

namespace zetaudiopluginhostui {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

std::filesystem::path NewFolder(const std::filesystem::path& path)
{
    std::filesystem::create_directory(path);
    return path;
}

} // namespace

ScanFixture::ScanFixture()
    : scripts(NewFolder(folder / "scripts")),
      environment(std::make_unique<zettesting::ScopedEnvironment>("ZET_FAKE_SCANNER", scripts.string()))
{
    zetcore::threads::RegisterMainThread(loop);
    zetcore::filesupport::commondirs::SetExecutableDir(zetcore::string::UTF8to16(ZET_FAKE_SCANNER_FOLDER));
    zetcore::debug::SetTraceSink(
        [log = lockedTrace](int level, std::string_view category, std::string_view text) {
            const std::lock_guard lock(log->mutex);
            log->all.emplace_back(text);
            if (level == 6 && category == "ExternalAudioPluginScan")
                log->lines.emplace_back(text);
        });
    ResetRegistry(*PluginModuleInfoManager::GetInstance());
    ResetBannedPlugins(*BannedPluginManager::GetInstance());
}

ScanFixture::~ScanFixture()
{
    ResetRegistry(*PluginModuleInfoManager::GetInstance());
    ResetBannedPlugins(*BannedPluginManager::GetInstance());
}

void ScanFixture::Script(int number, const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    zettesting::WriteAll(scripts / ("script." + std::to_string(number)), text);
}

std::vector<std::string> ScanFixture::Log(int number) const
{
    std::ifstream file(scripts / ("log." + std::to_string(number)));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

int ScanFixture::Launches() const
{
    int count = 0;
    while (std::filesystem::exists(scripts / ("launch." + std::to_string(count + 1))))
        ++count;
    return count;
}

void ScanFixture::Touch(const std::string& name) const
{
    zettesting::WriteAll(scripts / name, "");
}

void ScanFixture::WaitForFile(const std::string& name) const
{
    WaitUntil([&] { return std::filesystem::exists(scripts / name); });
}

int ScanFixture::RunningScanners() const
{
    return static_cast<int>(zettesting::ProcessesWithEnvironment(scripts.string()).size());
}

bool ScanFixture::ScannersEnd() const
{
    return zettesting::WaitForProcessesToEnd(scripts.string()).empty();
}

void ScanFixture::RunUntil(const std::function<bool()>& condition)
{
    EXPECT_TRUE(zettesting::Becomes(condition, [this] {
        loop->WaitAndRun(std::chrono::steady_clock::now() + std::chrono::milliseconds(20));
    })) << "nothing of what was waited for has happened";
}

void ScanFixture::WaitUntil(const std::function<bool()>& condition)
{
    EXPECT_TRUE(zettesting::Becomes(condition)) << "nothing of what was waited for has happened";
}

std::string ScanFixture::Info(const PluginLocator& plugin, int progress, int total, bool continues,
                              const std::string& subcomponent)
{
    return "reply " + zetmarshal::ToJson(zetscanprotocol::BuildScanInfoReply(
                          {plugin, zetcore::string::UTF8to16(subcomponent), progress, total, continues}));
}

zetaudiofilterhost::PluginLocator ScanFixture::Plugin(const std::string& name) const
{
    return {zetaudiofilterhost::TechnologyType::VST, zettesting::ToWide(folder / name)};
}

std::string ScanFixture::JsonText(std::wstring_view text)
{
    return zetmarshal::ToJson(zetcore::serialization::MakeString(text));
}

std::string ScanFixture::Quoted(const PluginLocator& plugin)
{
    return JsonText(plugin.ToString());
}

std::string ScanFixture::Result(const PluginLocator& plugin, const std::wstring& name)
{
    const auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(plugin);
    info->SetName(name);
    std::string text = PluginModuleInfoManager::ToConfigurationText({info});
    for (char& character : text)
        if (character == '\n')
            character = ' ';
    return "result " + text;
}

std::vector<std::string> ScanFixture::Traced() const
{
    const std::lock_guard lock(lockedTrace->mutex);
    return lockedTrace->lines;
}

bool ScanFixture::AnyTraced(const std::string& text) const
{
    const std::lock_guard lock(lockedTrace->mutex);
    return std::any_of(lockedTrace->all.begin(), lockedTrace->all.end(),
                       [&text](const std::string& line) { return line.find(text) != line.npos; });
}

} // namespace zetaudiopluginhostui
