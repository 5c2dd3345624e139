#include <zetui/utility/RefCountedObjectWithWeakPtr.h>

#include <functional>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

namespace zetui::utility {
namespace {

class Object : public RefCountedObjectWithWeakPtr
{
  public:
    explicit Object(int& counter, std::function<void(Object&)> whenDestroyed = {})
        : alive(counter), destroyed(std::move(whenDestroyed))
    {
        ++alive;
    }

  protected:
    ~Object() override
    {
        --alive;
        if (destroyed)
            destroyed(*this);
    }

  private:
    int& alive;
    std::function<void(Object&)> destroyed;
};

class Failing : public RefCountedObjectWithWeakPtr
{
  public:
    explicit Failing(WeakKey& key)
    {
        key = GetWeakKey();
        throw std::runtime_error("not today");
    }
};

TEST(RefCountedObjectWithWeakPtr, ALockedKeyHoldsTheObject)
{
    int alive = 0;
    auto object = MakeIntrusive<Object>(alive);
    const auto key = object->GetWeakKey();
    auto locked = RefCountedObjectWithWeakPtr::Lock(key);
    EXPECT_EQ(locked.get(), object.get());
    object = nullptr;
    EXPECT_EQ(alive, 1);
    locked = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(RefCountedObjectWithWeakPtr, AKeyDoesNotHoldTheObject)
{
    int alive = 0;
    auto object = MakeIntrusive<Object>(alive);
    const auto key = object->GetWeakKey();
    object = nullptr;
    EXPECT_EQ(alive, 0);
    EXPECT_FALSE(RefCountedObjectWithWeakPtr::Lock(key));
}

TEST(RefCountedObjectWithWeakPtr, AllKeysOfAnObjectAreOne)
{
    int alive = 0;
    const auto object = MakeIntrusive<Object>(alive);
    EXPECT_EQ(object->GetWeakKey(), object->GetWeakKey());
}

TEST(RefCountedObjectWithWeakPtr, AnEmptyKeyLocksNothing)
{
    EXPECT_FALSE(RefCountedObjectWithWeakPtr::Lock(nullptr));
}

TEST(RefCountedObjectWithWeakPtr, AnObjectOnItsWayIsNotLockedAgain)
{
    int alive = 0;
    RefCountedObjectWithWeakPtr::WeakKey key, keyInDestructor;
    bool lockedInDestructor = true;
    auto object = MakeIntrusive<Object>(alive, [&](Object& dying) {
        lockedInDestructor = static_cast<bool>(RefCountedObjectWithWeakPtr::Lock(key));
        keyInDestructor = dying.GetWeakKey();
    });
    key = object->GetWeakKey();
    object = nullptr;
    EXPECT_FALSE(lockedInDestructor);
    EXPECT_FALSE(RefCountedObjectWithWeakPtr::Lock(keyInDestructor));
    EXPECT_EQ(alive, 0);
}

TEST(RefCountedObjectWithWeakPtr, AFirstKeyAskedForInTheDestructorLocksNothing)
{
    int alive = 0;
    RefCountedObjectWithWeakPtr::WeakKey key;
    auto object = MakeIntrusive<Object>(alive, [&](Object& dying) { key = dying.GetWeakKey(); });
    object = nullptr;
    EXPECT_TRUE(key);
    EXPECT_FALSE(RefCountedObjectWithWeakPtr::Lock(key));
}

TEST(RefCountedObjectWithWeakPtr, AReferenceTakenInTheDestructorDoesNotDeleteTwice)
{
    int alive = 0;
    auto object =
        MakeIntrusive<Object>(alive, [](Object& dying) { const IntrusivePtr<Object> held(&dying); });
    object = nullptr;
    EXPECT_EQ(alive, 0);
}

TEST(RefCountedObjectWithWeakPtr, AKeyOfAnObjectWhoseConstructionFailedLocksNothing)
{
    RefCountedObjectWithWeakPtr::WeakKey key;
    EXPECT_THROW(MakeIntrusive<Failing>(key), std::runtime_error);
    EXPECT_FALSE(RefCountedObjectWithWeakPtr::Lock(key));
}

} // namespace
} // namespace zetui::utility
