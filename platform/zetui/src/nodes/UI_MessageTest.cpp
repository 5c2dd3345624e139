#include <zetui/nodes/UI_Message.h>

#include <gtest/gtest.h>
#include <zetui/utility/RefCountedObjectWithWeakPtr.h>

namespace zetui::ui {
namespace {

class Receiver : public utility::RefCountedObjectWithWeakPtr
{
  public:
    explicit Receiver(int& counter) : calls(counter) {}
    void OnButton(UI_ButtonChangedMessage*) { ++calls; }
    void OnAny(UI_Message*) { ++calls; }
    void OnButtonAndDrop(UI_ButtonChangedMessage*)
    {
        *owner = nullptr;
        ++calls;
    }
    utility::IntrusivePtr<Receiver>* owner = nullptr;

  private:
    int& calls;
};

TEST(BindMessageFunction, CallsTheMemberWithItsClassOfMessage)
{
    int calls = 0;
    const auto receiver = utility::MakeIntrusive<Receiver>(calls);
    UI_ButtonChangedMessage message(nullptr);
    (*BindMessageFunction(receiver.get(), &Receiver::OnButton))(&message);
    (*BindMessageFunction(receiver.get(), &Receiver::OnAny))(&message);
    EXPECT_EQ(calls, 2);
}

TEST(BindMessageFunction, AMessageOfAnotherClassIsAnInvalidTypeConversion)
{
    int calls = 0;
    const auto receiver = utility::MakeIntrusive<Receiver>(calls);
    UI_ControlChangedMessage message(nullptr);
    try {
        (*BindMessageFunction(receiver.get(), &Receiver::OnButton))(&message);
        FAIL();
    } catch (const zetcore::config::error& error) {
        EXPECT_STREQ(error.what(), "Invalid type conversion.");
    }
    EXPECT_EQ(calls, 0);
}

TEST(BindMessageFunctionWeakly, CallsNothingOnceTheObjectIsGone)
{
    int calls = 0;
    auto receiver = utility::MakeIntrusive<Receiver>(calls);
    const MessageFunction function = BindMessageFunctionWeakly(receiver.get(), &Receiver::OnButton);
    UI_ButtonChangedMessage message(nullptr);
    (*function)(&message);
    EXPECT_EQ(calls, 1);
    receiver = nullptr;
    (*function)(&message);
    EXPECT_EQ(calls, 1);
}

TEST(BindMessageFunctionWeakly, TheObjectStaysAliveDuringTheCall)
{
    int calls = 0;
    auto receiver = utility::MakeIntrusive<Receiver>(calls);
    receiver->owner = &receiver;
    const MessageFunction function = BindMessageFunctionWeakly(receiver.get(), &Receiver::OnButtonAndDrop);
    UI_ButtonChangedMessage message(nullptr);
    (*function)(&message);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(receiver);
}

} // namespace
} // namespace zetui::ui
