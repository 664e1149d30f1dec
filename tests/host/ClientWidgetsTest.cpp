// The main window's widgets and popup menus, asked through the fake host's widget
// factory and popup service.

#include "WrapFixture.h"
#include "fakehost/FakeXmlElement.h"
#include "host/ClientWidgets.h"

namespace qx {
namespace {

class ClientWidgetsTest : public WrapFixture {};

TEST_F(ClientWidgetsTest, AWidgetCountsAsBuiltByItsClassAndAsShownByItsRoom) {
  EXPECT_FALSE(IsClientWidgetBuilt(wrap_.get(), u"TitleMenuWidget"));
  host_.Widgets().SetWidgetClass(u"TitleMenuWidget", u"TitleMenuWidget");
  EXPECT_TRUE(IsClientWidgetBuilt(wrap_.get(), u"TitleMenuWidget"));
  EXPECT_TRUE(IsClientWidgetShown(wrap_.get(), u"TitleMenuWidget"));
  // Built but collapsed: no room, not shown.
  host_.Widgets().SetWidgetClass(u"BookmarkBarWidget", u"BookmarkBarWidget");
  host_.Widgets().SetWidgetRect(u"BookmarkBarWidget", 0, 85, 1280, 85);
  EXPECT_TRUE(IsClientWidgetBuilt(wrap_.get(), u"BookmarkBarWidget"));
  EXPECT_FALSE(IsClientWidgetShown(wrap_.get(), u"BookmarkBarWidget"));
  host_.Widgets().SetWidgetRect(u"BookmarkBarWidget", 0, 85, 1280, 110);
  EXPECT_TRUE(IsClientWidgetShown(wrap_.get(), u"BookmarkBarWidget"));
  // Without the factory nothing is built, and nothing breaks.
  host_.RemoveService("ClientWidgetFactory");
  EXPECT_FALSE(IsClientWidgetBuilt(wrap_.get(), u"TitleMenuWidget"));
  EXPECT_FALSE(IsClientWidgetShown(wrap_.get(), u"BookmarkBarWidget"));
  EXPECT_FALSE(IsClientWidgetBuilt(nullptr, u"TitleMenuWidget"));
}

TEST_F(ClientWidgetsTest, PopupMenusStayRegisteredUntilRemovedAndNeedTheService) {
  auto menu = MakeCom<TFakeXmlElement>(u"menu");
  ASSERT_TRUE(RegisterPopupMenu(wrap_.get(), u"newtab-popup-menu", menu.get()));
  EXPECT_EQ(host_.Popups().Popup(u"newtab-popup-menu"), menu.get());
  EXPECT_FALSE(RegisterPopupMenu(wrap_.get(), u"other-menu", nullptr));
  RemovePopupMenu(wrap_.get(), u"newtab-popup-menu");
  EXPECT_EQ(host_.Popups().Count(), 0u);
  host_.RemoveService("XmlWidgetPopup");
  EXPECT_FALSE(RegisterPopupMenu(wrap_.get(), u"newtab-popup-menu", menu.get()));
  RemovePopupMenu(wrap_.get(), u"newtab-popup-menu");
  EXPECT_EQ(host_.Popups().Count(), 0u);
}

}  // namespace
}  // namespace qx
