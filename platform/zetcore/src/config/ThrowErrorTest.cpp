#include <zetcore/config/ThrowError.h>

#include <gtest/gtest.h>
#include <zetcore/config/Localizer.h>

namespace zetcore::config {
namespace {

class ThrowErrorTest : public testing::Test
{
  protected:
    void TearDown() override { Localizer::Get().Reset(); }
};

template<typename Throwing>
error Caught(Throwing throwing)
{
    try {
        throwing();
    } catch (const error& caught) {
        return caught;
    }
    return {"nothing was thrown", -1};
}

TEST_F(ThrowErrorTest, CarriesTheKeysDefaultTextAndTheLevel)
{
    const error caught = Caught([] { ThrowError("$$$/Test/Broken=It is broken.", 0); });
    EXPECT_STREQ(caught.what(), "It is broken.");
    EXPECT_EQ(caught.Level(), 0);
}

TEST_F(ThrowErrorTest, IsLocalisedWhenItIsThrown)
{
    Localizer::Get().LoadTableFromText(
        "\"$$$/zetcore/utility/Error/InvalidTypeConversion\"=\"Falscher Typ.\"\n", "test");
    const error caught = Caught([] { ThrowInvalidTypeConversion(); });
    Localizer::Get().Reset();
    EXPECT_STREQ(caught.what(), "Falscher Typ.");
}

TEST_F(ThrowErrorTest, AnInvalidTypeConversionIsAnError)
{
    const error caught = Caught([] { ThrowInvalidTypeConversion(); });
    EXPECT_STREQ(caught.what(), "Invalid type conversion.");
    EXPECT_EQ(caught.Level(), 1);
}

} // namespace
} // namespace zetcore::config
