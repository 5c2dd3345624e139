#include <zetcore/utility/EnableSharedAs.h>

#include <gtest/gtest.h>
#include <zetcore/utility/NullPtrException.h>

namespace zetcore::utility {
namespace {

class Scan : public EnableSharedAs<Scan>
{};

class NamedScan : public Scan, public EnableSharedAs<NamedScan>
{
  public:
    std::shared_ptr<Scan> AsScan() { return Scan::SharedThis(); }
    std::shared_ptr<NamedScan> AsNamedScan() { return EnableSharedAs<NamedScan>::SharedThis(); }
};

TEST(EnableSharedAs, AnOwnedObjectGivesReferencesToItself)
{
    auto scan = std::make_shared<Scan>();
    EXPECT_EQ(scan->SharedThis(), scan);
    const std::weak_ptr<Scan> weak = scan->WeakThis();
    EXPECT_EQ(weak.lock(), scan);
    scan.reset();
    EXPECT_TRUE(weak.expired());
}

TEST(EnableSharedAs, AnObjectThatNobodyOwnsGivesNone)
{
    Scan scan;
    EXPECT_EQ(scan.SharedThis(), nullptr);
    EXPECT_TRUE(scan.WeakThis().expired());
}

TEST(EnableSharedAs, AllBasesShareOneOwner)
{
    const auto scan = std::make_shared<NamedScan>();
    EXPECT_EQ(scan->AsScan(), scan);
    EXPECT_EQ(scan->AsNamedScan(), scan);
    EXPECT_EQ(scan.use_count(), 1);
}

TEST(NullPtrException, NamesTheExpectedType)
{
    try {
        DoThrowNullPtrException("PluginManagerDialog");
        FAIL() << "nothing was thrown";
    } catch (const null_ptr_exception& error) {
        EXPECT_NE(std::string(error.what()).find("PluginManagerDialog"), std::string::npos);
    }
    EXPECT_THROW(DoThrowNullPtrException(nullptr), null_ptr_exception);
}

} // namespace
} // namespace zetcore::utility
