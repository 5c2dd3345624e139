#include <set>

#include <gmock/gmock.h>

#include "LoadedPlugin.h"

// These CLAP samples can be loaded without losing the process. GoodPluginsTest checks what the good ones
// tell.
namespace zettesting {
namespace {

constexpr std::size_t moreThanAnybodyReads = 65536;

TEST(ClapPlugins, AreSingleFilesWithTheFormatsExtension)
{
    const auto file = TestPlugin("good/clap_effect");
    EXPECT_EQ(file.extension(), ".clap");
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_EQ(TestPluginLibrary("good/clap_effect"), file);
}

TEST(ClapPlugins, CountWhoHasEnteredAndWhatWasMade)
{
    const EnteredClap library("good/clap_several");
    EXPECT_EQ(library.Count("CountEntered"), 1);
    {
        const EnteredClap again("good/clap_several");
        EXPECT_EQ(library.Count("CountEntered"), 2);
    }
    EXPECT_EQ(library.Count("CountEntered"), 1);

    const clap::PluginFactory& factory = library.Factory();
    InstancePointer instance(
        factory.createPlugin(&factory, &NamedClapHost(), "net.fennel-and-flint.cairn-hall"));
    ASSERT_TRUE(instance);
    EXPECT_EQ(library.Count("CountInstances"), 1);
    instance.reset();
    EXPECT_EQ(library.Count("CountInstances"), 0);
}

TEST(ClapPlugins, AreNotMadeForAnIdThatTheyDoNotHaveNorInitialisedWithoutAWholeHost)
{
    const EnteredClap library("good/clap_effect");
    const clap::PluginFactory& factory = library.Factory();
    EXPECT_EQ(factory.createPlugin(&factory, &NamedClapHost(), "no.such.thing"), nullptr);
    clap::Host nameless = NamedClapHost();
    nameless.name = "";
    const InstancePointer instance(factory.createPlugin(&factory, &nameless, "audio.marrowlane.reed-delay"));
    ASSERT_TRUE(instance);
    EXPECT_FALSE(instance->init(instance.get()));
    nameless.version = {};
    EXPECT_EQ(factory.createPlugin(&factory, &nameless, "audio.marrowlane.reed-delay"), nullptr);
}

TEST(ClapPlugins, ClapNullFieldsHasNothingInManyPlaces)
{
    const EnteredClap library("bad/clap_null_fields");
    EXPECT_EQ(library.Described(0)->id, nullptr);
    EXPECT_EQ(library.Described(1)->name, nullptr);
    EXPECT_EQ(library.Described(1)->features, nullptr);
    EXPECT_STREQ(library.Described(2)->id, "");
    EXPECT_STREQ(library.Described(3)->name, "");
    EXPECT_STREQ(library.Described(4)->id, library.Described(1)->id);
    EXPECT_EQ(library.Factory().getPluginCount(&library.Factory()), 6u);
    EXPECT_EQ(library.Described(5), nullptr);
}

TEST(ClapPlugins, ClapUnterminatedFieldsGoOnForLongerThanAnybodyReads)
{
    const EnteredClap library("bad/clap_unterminated_fields");
    const clap::Descriptor& described = *library.Described(0);
    for (const char* text : {described.id, described.name, described.productVersion})
        EXPECT_EQ(std::memchr(text, 0, moreThanAnybodyReads), nullptr);
    for (std::size_t i = 0; i < 4096; ++i)
        ASSERT_NE(described.features[i], nullptr);
}

TEST(ClapPlugins, ClapManyDescriptorsHaveIdsAndNamesOfTheirOwn)
{
    const EnteredClap library("bad/clap_many_descriptors");
    std::set<std::string> ids, names;
    while (const clap::Descriptor* one = library.Described(static_cast<std::uint32_t>(ids.size()))) {
        ASSERT_TRUE(ids.insert(one->id).second) << one->id;
        ASSERT_TRUE(names.insert(one->name).second) << one->name;
    }
    EXPECT_EQ(ids.size(), 10000u);
}

TEST(ClapPlugins, ClapLyingCountHasOneAndClapWithoutPluginsNone)
{
    const EnteredClap lying("bad/clap_lying_count");
    EXPECT_NE(lying.Described(0), nullptr);
    EXPECT_EQ(lying.Described(1), nullptr);
    EXPECT_EQ(lying.Factory().getPluginCount(&lying.Factory()), 4294967295u);
    const EnteredClap empty("bad/clap_without_plugins");
    EXPECT_EQ(empty.Factory().getPluginCount(&empty.Factory()), 0u);
}

TEST(ClapPlugins, ThatCannotBeUsedAreEnteredOrRefuse)
{
    EXPECT_THROW(EnteredClap("bad/clap_no_factory").Factory(), std::runtime_error);
    EXPECT_THROW(EnteredClap("bad/clap_refuses_init"), std::runtime_error);

    const EnteredClap throws("bad/clap_throws_exception");
    EXPECT_THROW(throws.Factory().getPluginCount(&throws.Factory()), std::runtime_error);
}

TEST(ClapPlugins, WhoseMakingFailsGiveNothingOrCannotBeInitialised)
{
    const EnteredClap none("bad/clap_create_fails");
    const auto make = [](const EnteredClap& library, const char* id) {
        const clap::PluginFactory& factory = library.Factory();
        return InstancePointer(factory.createPlugin(&factory, &NamedClapHost(), id));
    };
    EXPECT_FALSE(make(none, none.Described(0)->id));

    const EnteredClap some("bad/clap_some_fail");
    const InstancePointer works = make(some, some.Described(0)->id);
    ASSERT_TRUE(works);
    EXPECT_TRUE(works->init(works.get()));
    EXPECT_FALSE(make(some, some.Described(1)->id));
    const InstancePointer refuses = make(some, some.Described(2)->id);
    ASSERT_TRUE(refuses);
    EXPECT_FALSE(refuses->init(refuses.get()));
}

} // namespace
} // namespace zettesting
