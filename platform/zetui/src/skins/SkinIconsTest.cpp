#include "skins/SkinIcons.h"

#include <vector>

#include <QIcon>
#include <QImage>
#include <QSize>

#include "testing/WindowsFixture.h"

namespace zetui::skins {
namespace {

class SkinIcons : public WindowsFixture
{};

TEST_F(SkinIcons, EveryIconDrawsSomethingOfItsOwn)
{
    std::vector<QImage> pictures;
    for (const char* const name :
         {"add", "remove", "reset", "ok", "cancel", "search", "clear", "note", "caution", "stop"}) {
        const QImage picture = MakeIcon(name).pixmap(32, 32).toImage();
        ASSERT_EQ(picture.size(), QSize(32, 32)) << name;
        for (const QImage& other : pictures)
            EXPECT_NE(picture, other) << name;
        pictures.push_back(picture);
    }
    EXPECT_TRUE(MakeIcon("unknown").isNull());
}

} // namespace
} // namespace zetui::skins
