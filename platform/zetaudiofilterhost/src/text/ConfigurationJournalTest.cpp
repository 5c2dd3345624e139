#include "text/ConfigurationJournal.h"

#include "testing/RegistryFixture.h"
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiofilterhost {

namespace {

using zettesting::ReadAll;
using zettesting::WriteAll;
using Entries = std::vector<std::string>;

class ConfigurationJournalTest : public RegistryFixture
{
  protected:
    ConfigurationJournalTest() { WriteAll(path, base); }

    Entries Read(const std::string& content) const
    {
        return ConfigurationJournal::ReadEntries(file, FingerprintOf(content));
    }

    const std::string base = "the base file\n";
};

TEST(ContentFingerprint, IsTheLengthAnd64BitFnv1a)
{
    EXPECT_EQ(FingerprintOf(""), (ContentFingerprint{0, 0xcbf29ce484222325}));
    EXPECT_EQ(FingerprintOf("a"), (ContentFingerprint{1, 0xaf63dc4c8601ec8c}));
    EXPECT_EQ(FingerprintOf("foobar"), (ContentFingerprint{6, 0x85944171f73967e8}));
}

TEST_F(ConfigurationJournalTest, GivesBackItsEntriesInOrder)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    const Entries entries{"one", "", "three\nlines\n", "entry 3 0\n"};
    for (const std::string& entry : entries)
        writer.Append(entry);
    EXPECT_EQ(Read(base), entries);
    EXPECT_TRUE(writer.CanAppendTo(file));
}

TEST_F(ConfigurationJournalTest, NothingIsWrittenBeforeTheFirstEntry)
{
    ConfigurationJournal writer;
    EXPECT_FALSE(writer.CanAppendTo(file));
    writer.Begin(file, base);
    EXPECT_TRUE(writer.CanAppendTo(file));
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_EQ(Read(base), Entries());
}

TEST_F(ConfigurationJournalTest, TheFirstEntryReplacesAnOlderJournal)
{
    WriteAll(journal, "something old\n");
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("new");
    EXPECT_EQ(Read(base), Entries{"new"});
}

TEST_F(ConfigurationJournalTest, BelongsToOneContentOfTheBaseOnly)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("entry");
    EXPECT_EQ(Read(base + " "), Entries());
    EXPECT_EQ(Read("The base file\n"), Entries());
    EXPECT_EQ(Read(""), Entries());
    EXPECT_TRUE(HasTraced("AudioPlugins.xml.journal: belongs to no such file, passed over"));
}

TEST_F(ConfigurationJournalTest, ATornLastEntryIsPassedOverAtWhateverByteItEnds)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("first entry");
    const std::size_t whole = ReadAll(journal).size();
    writer.Append("second entry");
    const std::string text = ReadAll(journal);
    for (std::size_t length = 0; length < text.size(); ++length) {
        WriteAll(journal, text.substr(0, length));
        EXPECT_EQ(Read(base), length < whole ? Entries() : Entries{"first entry"}) << length;
    }
}

TEST_F(ConfigurationJournalTest, NothingIsReadFromAChangedEntryOn)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("first");
    writer.Append("second");
    writer.Append("third");
    std::string text = ReadAll(journal);
    text[text.find("second")] = 'S';
    WriteAll(journal, text);
    EXPECT_EQ(Read(base), Entries{"first"});
    EXPECT_TRUE(HasTraced("torn, passed over"));
}

TEST_F(ConfigurationJournalTest, RubbishIsNoJournal)
{
    const std::string firstLine = ReadAll(path);
    for (const std::string& rubbish : {std::string(), std::string("\n"), std::string(1000, '\0'),
                                       std::string("zetaudiofilterhost-journal-1 \n"),
                                       std::string("zetaudiofilterhost-journal-1 ffffffffffffffffff 1\n"),
                                       std::string("zetaudiofilterhost-journal-1 e xyz\nentry 0 0\n\n")}) {
        WriteAll(journal, rubbish);
        EXPECT_EQ(Read(firstLine), Entries());
    }
}

TEST_F(ConfigurationJournalTest, AnEntryThatClaimsToBeHugeIsTorn)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("first");
    WriteAll(journal, ReadAll(journal) + "entry ffffffffffffffff 0\nshort\n");
    EXPECT_EQ(Read(base), Entries{"first"});
}

TEST_F(ConfigurationJournalTest, AppendsOnlyWhileBothFilesAreAsItLeftThem)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("first");
    ASSERT_TRUE(writer.CanAppendTo(file));
    EXPECT_FALSE(writer.CanAppendTo(zetcore::filesupport::File(file.FullPath() + L"2")));

    const std::string whole = ReadAll(journal);
    WriteAll(journal, whole + "x");
    EXPECT_FALSE(writer.CanAppendTo(file));
    std::filesystem::remove(journal);
    EXPECT_FALSE(writer.CanAppendTo(file));
    WriteAll(journal, whole);
    EXPECT_TRUE(writer.CanAppendTo(file));

    WriteAll(path, base + "another program's");
    EXPECT_FALSE(writer.CanAppendTo(file));
    std::filesystem::remove(path);
    EXPECT_FALSE(writer.CanAppendTo(file));
}

TEST_F(ConfigurationJournalTest, AnAppendThatFailsEndsIt)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    std::filesystem::create_directory(journal);
    EXPECT_THROW(writer.Append("first"), zetcore::filesupport::file_exception);
    EXPECT_FALSE(writer.CanAppendTo(file));
}

TEST_F(ConfigurationJournalTest, AJournalThatANewBaseWouldReviveGoesFirst)
{
    ConfigurationJournal writer;
    writer.Begin(file, base);
    writer.Append("entry");
    ConfigurationJournal::PrepareForWholeSave(file, "another content");
    EXPECT_TRUE(std::filesystem::exists(journal));
    ConfigurationJournal::PrepareForWholeSave(file, base);
    EXPECT_FALSE(std::filesystem::exists(journal));
}

} // namespace

} // namespace zetaudiofilterhost
