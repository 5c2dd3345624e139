#include "vst3/Vst3Factory.h"

#include <algorithm>
#include <limits>

#include <gmock/gmock.h>

#include "testing/WordsOf.h"

namespace zetaudiopluginhost::vst3 {
namespace {

template<class Unit, std::size_t size>
void Fill(Unit (&array)[size], std::basic_string_view<Unit> text)
{
    std::copy_n(text.begin(), std::min(size - 1, text.size()), array);
}

/// One whose answer to Initialize is set.
class OneComponent final : public IComponent
{
  public:
    Result ZET_VST3_CALL QueryInterface(const char*, void**) override { return noInterface; }
    std::uint32_t ZET_VST3_CALL AddRef() override { return ++references; }
    std::uint32_t ZET_VST3_CALL Release() override { return --references; }
    Result ZET_VST3_CALL Initialize(FUnknown*) override { return initialized; }
    Result ZET_VST3_CALL Terminate() override
    {
        ++terminated;
        return resultOk;
    }
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

    Result initialized = resultOk;
    int terminated = 0;
    std::uint32_t references = 0;
};

/// The three class records differ in their names, which shows the one that was taken.
class TellingFactory final : public IPluginFactory3
{
  public:
    Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) override
    {
        const bool isOffered = (version >= 2 && IPluginFactory2::iid.Is(wanted)) ||
                               (version >= 3 && IPluginFactory3::iid.Is(wanted));
        *object = isOffered ? static_cast<IPluginFactory3*>(this) : nullptr;
        return isOffered ? resultOk : noInterface;
    }
    std::uint32_t ZET_VST3_CALL AddRef() override { return 1; }
    std::uint32_t ZET_VST3_CALL Release() override { return 1; }
    Result ZET_VST3_CALL GetFactoryInfo(PFactoryInfo*) override { return notImplemented; }
    std::int32_t ZET_VST3_CALL CountClasses() override { return classes; }
    Result ZET_VST3_CALL GetClassInfo(std::int32_t, PClassInfo* info) override
    {
        ++asked;
        FillAll(*info, std::string_view("One"));
        return resultOk;
    }
    Result ZET_VST3_CALL GetClassInfo2(std::int32_t, PClassInfo2* info) override
    {
        FillAll(*info, std::string_view("Two"));
        Fill(info->vendor, std::string_view("Vendor of two"));
        return hasRecord2 ? resultOk : resultFalse;
    }
    Result ZET_VST3_CALL GetClassInfoUnicode(std::int32_t, PClassInfoW* info) override
    {
        FillAll(*info, name);
        Fill(info->vendor, vendor);
        Fill(info->version, classVersion);
        return hasRecordW ? resultOk : resultFalse;
    }
    Result ZET_VST3_CALL CreateInstance(const char*, const char*, void** object) override
    {
        component.AddRef();
        *object = static_cast<IComponent*>(&component);
        return resultOk;
    }
    Result ZET_VST3_CALL SetHostContext(FUnknown*) override { return resultOk; }

    int version = 3;
    bool hasRecordW = true, hasRecord2 = true;
    std::int32_t classes = 1;
    int asked = 0;
    std::u16string_view name = u"W\u00EFde", vendor = u"Vendor of wide", classVersion = u"1.2";
    OneComponent component;

  private:
    template<class Record, class Unit>
    void FillAll(Record& record, std::basic_string_view<Unit> text)
    {
        record = {};
        Uid(1, 2, 3, 4).CopyTo(record.cid);
        Fill(record.category, std::string_view(audioModuleClass));
        Fill(record.name, text);
    }
};

Vst3Description DescriptionOf(TellingFactory& telling)
{
    Vst3Factory factory(&telling);
    std::vector<Uid> ids;
    Vst3Description description = factory.Describe(ids);
    EXPECT_EQ(ids.size(), description.classes.size());
    return description;
}

TEST(Vst3Factory, TakesTheNewestClassRecordThatAnswers)
{
    const auto nameWith = [](int version, bool hasRecordW, bool hasRecord2) {
        TellingFactory telling;
        telling.version = version;
        telling.hasRecordW = hasRecordW;
        telling.hasRecord2 = hasRecord2;
        return DescriptionOf(telling).classes.at(0).name;
    };
    EXPECT_EQ(nameWith(3, true, true), L"W\u00EFde");
    EXPECT_EQ(nameWith(3, false, true), L"Two");
    EXPECT_EQ(nameWith(3, false, false), L"One");
    EXPECT_EQ(nameWith(2, true, true), L"Two");
    EXPECT_EQ(nameWith(1, true, true), L"One");
}

TEST(Vst3Factory, ReadsUtf8ThatAFactoryHasWidenedByteByByte)
{
    TellingFactory telling;
    telling.name = u"\uFFC3\uFFBCn\uFFC3\uFFAF";
    telling.vendor = u"Caf\uFFC3\uFFA9";
    telling.classVersion = u"1.0 \uFFC2\uFFB5";
    const Vst3Class found = DescriptionOf(telling).classes.at(0);
    EXPECT_EQ(found.name, L"\u00FCn\u00EF");
    EXPECT_EQ(found.vendor, L"Caf\u00E9");
    EXPECT_EQ(found.version, L"1.0 \u00B5");
}

TEST(Vst3Factory, AsksForSoManyClassesAtMost)
{
    TellingFactory telling;
    telling.version = 1;
    telling.classes = 20000;
    EXPECT_EQ(DescriptionOf(telling).classes.size(), 10000u);
    EXPECT_EQ(telling.asked, 10000);
    telling.classes = -1;
    EXPECT_EQ(DescriptionOf(telling).classes.size(), 0u);
}

TEST(Vst3Factory, TerminatesAComponentExactlyWhenItWasInitialised)
{
    TellingFactory telling;
    Vst3Factory factory(&telling);
    EXPECT_EQ(WordsOf(factory.CreateAndRelease(Uid(1, 2, 3, 4))), "");
    EXPECT_EQ(telling.component.terminated, 1);
    EXPECT_EQ(telling.component.references, 0u);

    telling.component.terminated = 0;
    telling.component.initialized = resultFalse;
    EXPECT_THAT(WordsOf(factory.CreateAndRelease(Uid(1, 2, 3, 4))),
                testing::HasSubstr("could not be initialised"));
    EXPECT_EQ(telling.component.terminated, 0);
    EXPECT_EQ(telling.component.references, 0u) << "it is released all the same";
}

} // namespace
} // namespace zetaudiopluginhost::vst3
