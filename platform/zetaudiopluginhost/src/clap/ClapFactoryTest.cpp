#include "clap/ClapFactory.h"

#include <limits>
#include <stdexcept>

#include <gmock/gmock.h>

#include "clap/ClapHost.h"
#include "formats/ScanSteps.h"
#include "testing/WordsOf.h"

namespace zetaudiopluginhost::clap {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// A library in this process that does what a test sets.
struct FakeLibrary : PluginFactory
{
    FakeLibrary() : PluginFactory{&Count, &Get, &Create} {}

    std::uint32_t claimed = 1;
    /// Null for every index behind them.
    std::vector<Descriptor> descriptors{Describe("org.example.one")};
    std::uint32_t asked = 0;
    bool initAnswers = true;
    bool makesNothing = false;
    std::string createdId;
    const Host* host = nullptr;
    int inits = 0, destroys = 0;
    Plugin plugin{nullptr, this,    &Init,   &Destroy, nullptr, nullptr,
                  nullptr, nullptr, nullptr, nullptr,  nullptr, nullptr};

    static Descriptor Describe(const char* id)
    {
        return {interfaceVersion, id, "Name", "Vendor", nullptr, nullptr, nullptr, "1.0", nullptr, nullptr};
    }

    static FakeLibrary& From(const PluginFactory* factory)
    {
        return *static_cast<FakeLibrary*>(const_cast<PluginFactory*>(factory));
    }
    static std::uint32_t Count(const PluginFactory* factory) { return From(factory).claimed; }
    static const Descriptor* Get(const PluginFactory* factory, std::uint32_t index)
    {
        FakeLibrary& self = From(factory);
        ++self.asked;
        return index < self.descriptors.size() ? &self.descriptors[index] : nullptr;
    }
    static const Plugin* Create(const PluginFactory* factory, const Host* host, const char* id)
    {
        FakeLibrary& self = From(factory);
        self.createdId = id;
        self.host = host;
        return self.makesNothing ? nullptr : &self.plugin;
    }
    static bool Init(const Plugin* plugin)
    {
        auto& self = *static_cast<FakeLibrary*>(plugin->data);
        ++self.inits;
        return self.initAnswers;
    }
    static void Destroy(const Plugin* plugin) { ++static_cast<FakeLibrary*>(plugin->data)->destroys; }
};

TEST(ClapFactory, CopiesWhatADescriptorSays)
{
    FakeLibrary library;
    std::string id = "org.example.changes", name = "Before";
    library.descriptors[0].id = id.c_str();
    library.descriptors[0].name = name.c_str();
    const ClapFactory factory(library);
    const ClapPlugins plugins = factory.Describe();
    id.assign("xxx.xxxxxxx.xxxxxxx");
    name.assign("After");
    ASSERT_EQ(plugins.usable.size(), 1u);
    EXPECT_EQ(plugins.usable[0].name, L"Before");
    EXPECT_EQ(plugins.usable[0].shownId, L"org.example.changes");
    EXPECT_EQ(plugins.usable[0].vendor, L"Vendor");
    EXPECT_EQ(plugins.usable[0].version, L"1.0");
    EXPECT_THAT(plugins.usable[0].features, IsEmpty());
    EXPECT_EQ(WordsOf(plugins.problem), "");
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugins.usable[0])), "");
    EXPECT_EQ(library.createdId, "org.example.changes");
}

TEST(ClapFactory, AsksForAnInstanceByTheIdAsItIs)
{
    FakeLibrary library;
    library.descriptors[0].id = " caf\xE9\n";
    const ClapFactory factory(library);
    const ClapPlugins plugins = factory.Describe();
    EXPECT_EQ(plugins.usable.at(0).shownId, L"caf\uFFFD");
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugins.usable[0])), "");
    EXPECT_EQ(library.createdId, " caf\xE9\n");
}

TEST(ClapFactory, LeavesOutWhatCannotBeUsedAndSaysWhyOfTheFirst)
{
    FakeLibrary library;
    const auto problemOf = [&library](std::vector<Descriptor> descriptors) {
        library.claimed = 2;
        library.descriptors = std::move(descriptors);
        const ClapPlugins plugins = ClapFactory(library).Describe();
        EXPECT_EQ(plugins.usable.size(), 1u);
        EXPECT_EQ(plugins.claimed, 2u);
        return WordsOf(plugins.problem);
    };
    const Descriptor good = FakeLibrary::Describe("good");
    EXPECT_EQ(problemOf({good, FakeLibrary::Describe("good")}),
              "1 of its 2 plug-ins cannot be used: number 2 has the id of another one");
    EXPECT_EQ(problemOf({good, FakeLibrary::Describe(" good\n")}),
              "1 of its 2 plug-ins cannot be used: number 2 has the id of another one");
    EXPECT_EQ(problemOf({FakeLibrary::Describe(nullptr), good}),
              "1 of its 2 plug-ins cannot be used: number 1 has no id");
    EXPECT_EQ(problemOf({FakeLibrary::Describe(" "), good}),
              "1 of its 2 plug-ins cannot be used: number 1 has no id");
    EXPECT_EQ(problemOf({good}), "1 of its 2 plug-ins cannot be used: number 2 has no description");
    Descriptor unknown = FakeLibrary::Describe("from elsewhere");
    unknown.version = {2, 0, 1};
    EXPECT_EQ(problemOf({unknown, good}), "1 of its 2 plug-ins cannot be used: number 1 is described in "
                                          "version 2.0.1 of CLAP, which this system does not know");
}

TEST(ClapFactory, DoesNotBelieveACount)
{
    FakeLibrary library;
    library.claimed = std::numeric_limits<std::uint32_t>::max();
    ClapPlugins plugins = ClapFactory(library).Describe();
    EXPECT_EQ(plugins.usable.size(), 1u);
    EXPECT_EQ(plugins.claimed, 4294967295u);
    EXPECT_EQ(WordsOf(plugins.problem),
              "4294967294 of its 4294967295 plug-ins cannot be used: number 2 has no description");
    EXPECT_EQ(library.asked, 10000u);

    library.claimed = 10001;
    std::vector<std::string> ids;
    for (std::uint32_t i = 0; i < library.claimed; ++i)
        ids.push_back("number " + std::to_string(i));
    library.descriptors.clear();
    for (const std::string& id : ids)
        library.descriptors.push_back(FakeLibrary::Describe(id.c_str()));
    plugins = ClapFactory(library).Describe();
    EXPECT_EQ(plugins.usable.size(), 10000u);
    EXPECT_EQ(WordsOf(plugins.problem),
              "1 of its 10001 plug-ins cannot be used: only the first 10000 are looked at");

    library.claimed = 0;
    EXPECT_THAT(ClapFactory(library).Describe().usable, IsEmpty());
}

TEST(ClapFactory, AnInstanceIsDestroyedOnceWhateverItAnswers)
{
    FakeLibrary library;
    const ClapFactory factory(library);
    const ClapPlugin plugin = factory.Describe().usable.at(0);
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugin)), "");
    EXPECT_EQ(library.inits, 1);
    EXPECT_EQ(library.destroys, 1);
    EXPECT_EQ(library.host, &ScanHost());

    library.initAnswers = false;
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugin)), "it could not be initialised");
    EXPECT_EQ(library.destroys, 2);

    library.makesNothing = true;
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugin)), "it could not be created");
    EXPECT_EQ(library.inits, 2);
    EXPECT_EQ(library.destroys, 2);
}

TEST(ClapFactory, FunctionsThatAreMissingAreNotCalled)
{
    const auto without = [](auto function) {
        FakeLibrary library;
        library.*function = nullptr;
        EXPECT_THROW(ClapFactory{library}, PluginUnusable);
    };
    without(&PluginFactory::getPluginCount);
    without(&PluginFactory::getPluginDescriptor);
    without(&PluginFactory::createPlugin);

    FakeLibrary library;
    const ClapFactory factory(library);
    const ClapPlugin plugin = factory.Describe().usable.at(0);
    library.plugin.init = nullptr;
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugin)), "it lacks functions");
    EXPECT_EQ(library.destroys, 1) << "it was made all the same";
    library.plugin.init = &FakeLibrary::Init;
    library.plugin.destroy = nullptr;
    EXPECT_EQ(WordsOf(factory.CreateAndDestroy(plugin)), "it lacks functions");
    EXPECT_EQ(library.inits, 0);
}

TEST(ClapFactory, ExceptionsOfThePluginAreTold)
{
    FakeLibrary library;
    const ClapFactory factory(library);
    const ClapPlugin plugin = factory.Describe().usable.at(0);
    library.plugin.init = [](const Plugin*) -> bool { throw std::runtime_error("no licence"); };
    EXPECT_THROW(factory.CreateAndDestroy(plugin), PluginThrew);
    EXPECT_EQ(library.destroys, 0) << "nothing of it is called any more";
}

TEST(ClapHost, HasANameAndEveryFunctionAndNoExtensions)
{
    const Host& host = ScanHost();
    EXPECT_EQ(host.version.major, 1u);
    EXPECT_STRNE(host.name, "");
    EXPECT_STRNE(host.productVersion, "");
    ASSERT_NE(host.vendor, nullptr);
    ASSERT_NE(host.url, nullptr);
    EXPECT_EQ(host.getExtension(&host, "clap.log"), nullptr);
    host.requestRestart(&host);
    host.requestProcess(&host);
    host.requestCallback(&host);
    EXPECT_EQ(&ScanHost(), &host);
}

} // namespace
} // namespace zetaudiopluginhost::clap
