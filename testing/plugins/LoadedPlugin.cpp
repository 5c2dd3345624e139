#include "LoadedPlugin.h"

#include <stdexcept>

namespace zettesting {

namespace {

std::int32_t currentId = 0;
vst2::TimeInfo timeInfo{};

std::string ToUtf8(std::u16string_view text)
{
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

std::string ToHex(const vst3::Tuid& tuid)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char byte : vst3::Uid::FromTuid(tuid).PrintedOrder()) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 15];
    }
    return text;
}

TestPluginFacts FactsOf(const std::string& plugin, vst2::Effect& effect)
{
    return {plugin,
            AskText(effect, vst2::EffectGetEffectName),
            AskText(effect, vst2::EffectGetVendorString),
            std::to_string(AskNumber(effect, vst2::EffectGetVendorVersion)),
            std::to_string(static_cast<std::uint32_t>(effect.uniqueID)),
            (effect.flags & vst2::EffectIsSynth) != 0};
}

std::vector<TestPluginFacts> AskVst2(const std::string& plugin)
{
    const boost::dll::shared_library library = LoadLibraryOf(plugin);
    const EffectPointer effect = CreateEffect(library);
    if (AskNumber(*effect, vst2::EffectGetPlugCategory) != vst2::CategoryShell)
        return {FactsOf(plugin, *effect)};

    std::vector<TestPluginFacts> facts;
    char name[vst2::generousStringBuffer] = {};
    while (const std::intptr_t id =
               effect->dispatcher(effect.get(), vst2::EffectShellGetNextPlugin, 0, 0, name, 0.0f)) {
        const EffectPointer inside = CreateEffect(library, static_cast<std::int32_t>(id));
        facts.push_back(FactsOf(plugin, *inside));
        facts.back().inShell = true;
        if (facts.back().name != name)
            throw std::runtime_error("the shell calls " + facts.back().name + " " + name);
    }
    return facts;
}

std::vector<TestPluginFacts> AskVst3(const std::string& plugin)
{
    const EnteredModule module(plugin);
    const auto factory = module.Factory();
    const auto factory2 = Query<vst3::IPluginFactory2>(*factory);
    const auto factory3 = Query<vst3::IPluginFactory3>(*factory);
    vst3::PFactoryInfo factoryInfo{};
    factory->GetFactoryInfo(&factoryInfo);

    std::vector<TestPluginFacts> facts;
    for (std::int32_t i = 0; i < factory->CountClasses(); ++i) {
        vst3::PClassInfo info{};
        vst3::PClassInfo2 info2{};
        vst3::PClassInfoW infoW{};
        factory->GetClassInfo(i, &info);
        if (Text(info.category) != vst3::audioModuleClass)
            continue;
        if (factory2)
            factory2->GetClassInfo2(i, &info2);
        if (factory3)
            factory3->GetClassInfoUnicode(i, &infoW);
        const std::string_view vendor =
            Text(info2.vendor).empty() ? Text(factoryInfo.vendor) : Text(info2.vendor);
        facts.push_back({plugin, factory3 ? ToUtf8(Text(infoW.name)) : std::string(Text(info.name)),
                         std::string(vendor), std::string(Text(info2.version)), ToHex(info.cid),
                         Text(info2.subCategories).starts_with("Instrument")});
    }
    return facts;
}

std::vector<TestPluginFacts> AskClap(const std::string& plugin)
{
    const EnteredClap library(plugin);
    std::vector<TestPluginFacts> facts;
    while (const clap::Descriptor* one = library.Described(static_cast<std::uint32_t>(facts.size()))) {
        const clap::PluginFactory& factory = library.Factory();
        const InstancePointer instance(factory.createPlugin(&factory, &NamedClapHost(), one->id));
        if (!instance->init(instance.get()))
            throw std::runtime_error(std::string(one->id) + " cannot be initialised");
        bool isInstrument = false;
        for (const char* const* feature = one->features; *feature; ++feature)
            isInstrument = isInstrument || std::string_view(*feature) == clap::instrumentFeature;
        facts.push_back({plugin, one->name, one->vendor, one->productVersion, one->id, isInstrument});
    }
    for (TestPluginFacts& one : facts)
        one.inShell = facts.size() > 1;
    return facts;
}

} // namespace

std::intptr_t AnswerAsHost(vst2::Effect*, std::int32_t opcode, std::int32_t, std::intptr_t, void* pointer,
                           float)
{
    switch (opcode) {
    case vst2::HostVersion:
        return vst2::interfaceVersion;
    case vst2::HostCurrentId:
        return currentId;
    case vst2::HostGetTime:
        timeInfo.sampleRate = 48000;
        return reinterpret_cast<std::intptr_t>(&timeInfo);
    case vst2::HostGetSampleRate:
        return 48000;
    case vst2::HostGetBlockSize:
        return 512;
    case vst2::HostGetProductString:
        std::memcpy(pointer, "Plug-in test", sizeof("Plug-in test"));
        return 1;
    case vst2::HostGetLanguage:
        return vst2::LanguageEnglish;
    default:
        return 0;
    }
}

boost::dll::shared_library LoadLibraryOf(std::string_view plugin)
{
    return boost::dll::shared_library(TestPluginLibrary(plugin));
}

vst2::EntryFunction EntryOf(const boost::dll::shared_library& library)
{
    for (const char* name : {vst2::entryName, vst2::oldEntryName})
        if (library.has(name))
            return &library.get<vst2::Effect*(vst2::HostCallback)>(name);
    throw std::runtime_error("no entry function");
}

EffectPointer CreateEffect(const boost::dll::shared_library& library, std::int32_t id)
{
    currentId = id;
    vst2::Effect* effect = EntryOf(library)(&AnswerAsHost);
    currentId = 0;
    if (effect)
        effect->dispatcher(effect, vst2::EffectOpen, 0, 0, nullptr, 0.0f);
    return EffectPointer(effect);
}

std::string AskText(vst2::Effect& effect, vst2::EffectOpcode opcode)
{
    char text[vst2::generousStringBuffer] = {};
    effect.dispatcher(&effect, opcode, 0, 0, text, 0.0f);
    return text;
}

std::intptr_t AskNumber(vst2::Effect& effect, vst2::EffectOpcode opcode)
{
    return effect.dispatcher(&effect, opcode, 0, 0, nullptr, 0.0f);
}

EnteredModule::EnteredModule(std::string_view plugin) : library(LoadLibraryOf(plugin))
{
    if (library.has(vst3::moduleEntryName) &&
        !library.get<bool(void*)>(vst3::moduleEntryName)(library.native()))
        throw std::runtime_error("the module cannot be entered");
    if (library.has(vst3::initDllName) && !library.get<bool()>(vst3::initDllName)())
        throw std::runtime_error("the module cannot be entered");
}

EnteredModule::~EnteredModule()
{
    for (const char* name : {vst3::moduleExitName, vst3::exitDllName})
        if (library.has(name))
            library.get<bool()>(name)();
}

InterfacePointer<vst3::IPluginFactory> EnteredModule::Factory() const
{
    const auto getFactory =
        reinterpret_cast<vst3::GetPluginFactoryFunction>(&library.get<void()>(vst3::factoryEntryName));
    return InterfacePointer<vst3::IPluginFactory>(getFactory());
}

vst3::Result ZET_VST3_CALL NamedHost::QueryInterface(const char* wanted, void** object)
{
    *object = nullptr;
    if (!vst3::FUnknown::iid.Is(wanted) && !vst3::IHostApplication::iid.Is(wanted))
        return vst3::noInterface;
    AddRef();
    *object = static_cast<vst3::IHostApplication*>(this);
    return vst3::resultOk;
}

vst3::Result ZET_VST3_CALL NamedHost::GetName(char16_t* name)
{
    constexpr std::u16string_view text = u"Plug-in test";
    name[text.copy(name, text.size())] = 0;
    return vst3::resultOk;
}

vst3::Result ZET_VST3_CALL NamedHost::CreateInstance(const char*, const char*, void** object)
{
    *object = nullptr;
    return vst3::noInterface;
}

EnteredClap::EnteredClap(std::string_view plugin)
    : library(LoadLibraryOf(plugin)), entry(library.get<const clap::Entry>(clap::entryName))
{
    if (!entry.init(TestPluginLibrary(plugin).string().c_str()))
        throw std::runtime_error("the library cannot be entered");
}

EnteredClap::~EnteredClap()
{
    entry.deinit();
}

const clap::PluginFactory& EnteredClap::Factory() const
{
    const void* factory = entry.getFactory(clap::pluginFactoryId);
    if (!factory)
        throw std::runtime_error("no plug-in factory");
    return *static_cast<const clap::PluginFactory*>(factory);
}

const clap::Descriptor* EnteredClap::Described(std::uint32_t index) const
{
    const clap::PluginFactory& factory = Factory();
    return index < factory.getPluginCount(&factory) ? factory.getPluginDescriptor(&factory, index) : nullptr;
}

const clap::Host& NamedClapHost()
{
    static constexpr auto ignore = [](const clap::Host*) {};
    static constexpr auto noExtension = [](const clap::Host*, const char*) -> const void* { return nullptr; };
    static const clap::Host host{
        clap::interfaceVersion, nullptr, "Plug-in test", "", "", "1", noExtension, ignore, ignore, ignore};
    return host;
}

std::vector<TestPluginFacts> AskForFacts(const std::string& plugin)
{
    if (plugin.find("/clap_") != std::string::npos)
        return AskClap(plugin);
    return plugin.find("/vst3_") == std::string::npos ? AskVst2(plugin) : AskVst3(plugin);
}

} // namespace zettesting
