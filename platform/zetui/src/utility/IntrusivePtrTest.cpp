#include <zetui/utility/IntrusivePtr.h>

#include <gtest/gtest.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::utility {
namespace {

class Counted : public RefCountedObject
{
  public:
    explicit Counted(int& counter) : alive(counter) { ++alive; }

  protected:
    ~Counted() override { --alive; }

  private:
    int& alive;
};

class Derived : public Counted
{
  public:
    using Counted::Counted;

  protected:
    ~Derived() override = default;
};

TEST(IntrusivePtr, TheLastReferenceDeletesTheObject)
{
    int alive = 0;
    {
        const auto first = MakeIntrusive<Counted>(alive);
        {
            const IntrusivePtr<Counted> second = first;
            EXPECT_EQ(second, first);
        }
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
}

TEST(IntrusivePtr, MovingPassesTheReferenceOn)
{
    int alive = 0;
    auto first = MakeIntrusive<Counted>(alive);
    IntrusivePtr<Counted> second = std::move(first);
    EXPECT_TRUE(second);
    second = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(IntrusivePtr, ConvertsToTheBase)
{
    int alive = 0;
    IntrusivePtr<Counted> base = MakeIntrusive<Derived>(alive);
    EXPECT_EQ(alive, 1);
    base = MakeIntrusive<Counted>(alive);
    EXPECT_EQ(alive, 1);
}

TEST(IntrusivePtr, AssigningItselfKeepsTheObject)
{
    int alive = 0;
    auto pointer = MakeIntrusive<Counted>(alive);
    const auto& same = pointer;
    pointer = same;
    EXPECT_EQ(alive, 1);
}

TEST(IntrusivePtr, IsEmptyByDefault)
{
    const IntrusivePtr<Counted> empty;
    EXPECT_FALSE(empty);
    EXPECT_EQ(empty.get(), nullptr);
    EXPECT_EQ(empty, IntrusivePtr<Counted>(nullptr));
}

} // namespace
} // namespace zetui::utility
