#pragma once

#include <atomic>
#include <cstring>
#include <vector>

#include <vst3/Vst3Abi.h>

#include "Export.h"
#include "Vst3Entry.h"

/// The code that all VST3 samples share. Each sample has its own GetPluginFactory.
namespace zettestplugin {

using namespace zetaudiopluginhost::vst3;

struct Vst3Class
{
    Uid cid;
    const char* category;
    const char* name;
    const char16_t* wideName; ///< null: `name` widened
    const char* subCategories;
    const char* vendor; ///< empty: the factory's
    const char* version;
};

struct Vst3Description
{
    const char* vendor;
    const char* url;
    const char* email;
    std::vector<Vst3Class> classes;
    int factoryVersion = 3; ///< the highest factory interface that is offered
};

/// Copies a text into an array. A text that is too long leaves no room for a terminator.
template<class Unit, std::size_t size, class Character>
void Fill(Unit (&array)[size], const Character* text)
{
    for (std::size_t i = 0; i < size && text[i] != 0; ++i)
        array[i] = static_cast<Unit>(text[i]);
}

/// A component without busses. It fails without a host that tells its name.
class Vst3Component final : public IComponent
{
  public:
    Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) override
    {
        if (!FUnknown::iid.Is(wanted) && !IPluginBase::iid.Is(wanted) && !IComponent::iid.Is(wanted)) {
            *object = nullptr;
            return noInterface;
        }
        AddRef();
        *object = static_cast<IComponent*>(this);
        return resultOk;
    }
    std::uint32_t ZET_VST3_CALL AddRef() override { return ++references; }
    std::uint32_t ZET_VST3_CALL Release() override
    {
        const std::uint32_t left = --references;
        if (left == 0)
            delete this;
        return left;
    }

    Result ZET_VST3_CALL Initialize(FUnknown* context) override
    {
        void* found = nullptr;
        if (!context || context->QueryInterface(IHostApplication::iid.Data(), &found) != resultOk)
            return invalidArgument;
        auto* application = static_cast<IHostApplication*>(found);
        char16_t name[128] = {};
        const Result result = application->GetName(name);
        application->Release();
        return result == resultOk && name[0] != 0 ? resultOk : internalError;
    }
    Result ZET_VST3_CALL Terminate() override { return resultOk; }

    Result ZET_VST3_CALL GetControllerClassId(char*) override { return notImplemented; }
    Result ZET_VST3_CALL SetIoMode(std::int32_t) override { return notImplemented; }
    std::int32_t ZET_VST3_CALL GetBusCount(std::int32_t, std::int32_t) override { return 0; }
    Result ZET_VST3_CALL GetBusInfo(std::int32_t, std::int32_t, std::int32_t, BusInfo&) override
    {
        return invalidArgument;
    }
    Result ZET_VST3_CALL GetRoutingInfo(RoutingInfo&, RoutingInfo&) override { return notImplemented; }
    Result ZET_VST3_CALL ActivateBus(std::int32_t, std::int32_t, std::int32_t, TBool) override
    {
        return invalidArgument;
    }
    Result ZET_VST3_CALL SetActive(TBool) override { return resultOk; }
    Result ZET_VST3_CALL SetState(IBStream*) override { return notImplemented; }
    Result ZET_VST3_CALL GetState(IBStream*) override { return notImplemented; }

  private:
    ~Vst3Component() = default;

    std::atomic<std::uint32_t> references{1};
};

/// The module's factory, which lives as long as the module. References are counted but free nothing.
class Vst3Factory final : public IPluginFactory3
{
  public:
    explicit Vst3Factory(Vst3Description descriptionToShow) : description(std::move(descriptionToShow)) {}

    /// The reference that GetPluginFactory returns; null when the host has not entered the module.
    IPluginFactory* Reference()
    {
        if (!ModuleIsEntered())
            return nullptr;
        AddRef();
        return this;
    }

    Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) override
    {
        const bool offered = FUnknown::iid.Is(wanted) || IPluginFactory::iid.Is(wanted) ||
                             (description.factoryVersion >= 2 && IPluginFactory2::iid.Is(wanted)) ||
                             (description.factoryVersion >= 3 && IPluginFactory3::iid.Is(wanted));
        if (!offered) {
            *object = nullptr;
            return noInterface;
        }
        AddRef();
        *object = static_cast<IPluginFactory3*>(this);
        return resultOk;
    }
    std::uint32_t ZET_VST3_CALL AddRef() override { return ++references; }
    std::uint32_t ZET_VST3_CALL Release() override { return --references; }

    Result ZET_VST3_CALL GetFactoryInfo(PFactoryInfo* info) override
    {
        *info = {};
        Fill(info->vendor, description.vendor);
        Fill(info->url, description.url);
        Fill(info->email, description.email);
        info->flags = FactoryUnicode;
        return resultOk;
    }

    std::int32_t ZET_VST3_CALL CountClasses() override
    {
        return static_cast<std::int32_t>(description.classes.size());
    }

    Result ZET_VST3_CALL GetClassInfo(std::int32_t index, PClassInfo* info) override
    {
        return FillClass(index, info, [](const Vst3Class&, PClassInfo&) {});
    }

    Result ZET_VST3_CALL GetClassInfo2(std::int32_t index, PClassInfo2* info) override
    {
        return FillClass(index, info,
                         [](const Vst3Class& one, PClassInfo2& filled) { FillMore(one, filled); });
    }

    Result ZET_VST3_CALL GetClassInfoUnicode(std::int32_t index, PClassInfoW* info) override
    {
        return FillClass(index, info, [](const Vst3Class& one, PClassInfoW& filled) {
            FillMore(one, filled);
            if (one.wideName)
                Fill(filled.name, one.wideName);
        });
    }

    Result ZET_VST3_CALL CreateInstance(const char* cid, const char* wanted, void** object) override
    {
        *object = nullptr;
        for (const Vst3Class& one : description.classes)
            if (one.cid.Is(cid) && std::strcmp(one.category, audioModuleClass) == 0)
                return CreateComponent(wanted, object);
        return invalidArgument;
    }

    Result ZET_VST3_CALL SetHostContext(FUnknown*) override { return resultOk; }

  private:
    static Result CreateComponent(const char* wanted, void** object)
    {
        auto* component = new Vst3Component;
        const Result result = component->QueryInterface(wanted, object);
        component->Release();
        return result;
    }

    template<class Info, class More>
    Result FillClass(std::int32_t index, Info* info, More more)
    {
        *info = {};
        if (index < 0 || index >= CountClasses())
            return invalidArgument;
        const Vst3Class& one = description.classes[static_cast<std::size_t>(index)];
        one.cid.CopyTo(info->cid);
        info->cardinality = manyInstances;
        Fill(info->category, one.category);
        Fill(info->name, one.name);
        more(one, *info);
        return resultOk;
    }

    template<class Info>
    static void FillMore(const Vst3Class& one, Info& info)
    {
        Fill(info.subCategories, one.subCategories);
        Fill(info.vendor, one.vendor);
        Fill(info.version, one.version);
        Fill(info.sdkVersion, "VST 3.7.8");
    }

    Vst3Description description;
    std::atomic<std::uint32_t> references{0};
};

} // namespace zettestplugin

/// Declares the function that returns the factory. Its body must follow.
#define ZET_VST3_FACTORY ZET_PLUGIN_EXPORT zettestplugin::IPluginFactory* ZET_VST3_CALL GetPluginFactory()
