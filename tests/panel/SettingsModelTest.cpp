#include "panel/SettingsModel.h"
#include "PanelModelFixture.h"

namespace quillary::test {

namespace {

class SettingsModelTest : public PanelModelTest {
protected:
    SettingsModel& sheet() { return *model->settings(); }
};

TEST_F(SettingsModelTest, ALimitIsStoredOnlyWhenItIsConfirmed) {
    struct {
        int stored;
        int chosen;
        int pending;
        bool confirmed;
        int then;
    } const cases[] = {
        {0, 500, 500, true, 500},      {0, 500, 500, false, 0},    {500, 2000, 2000, true, 2000},
        {500, 2000, 2000, false, 500}, {500, 0, 0, false, 0},      {500, 0, 0, true, 0},
        {1000, 1000, 0, true, 1000},   {-5, 5000, 5000, false, 0}, {0, -3, 0, true, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.stored) + " to " + std::to_string(c.chosen));
        store.setValue(SettingsKey::recentLimit, c.stored);
        sheet().chooseRecentLimit(c.chosen);
        EXPECT_EQ(sheet().pendingLimit(), c.pending);
        EXPECT_TRUE(c.pending == 0 || settings.recentLimit() == std::max(c.stored, 0));
        c.confirmed ? sheet().setALimit() : sheet().keepNeverDelete();
        EXPECT_EQ(sheet().pendingLimit(), 0);
        EXPECT_EQ(settings.recentLimit(), c.then);
    }
}

TEST_F(SettingsModelTest, ALaterChoiceReplacesThePendingOne) {
    sheet().chooseRecentLimit(500);
    sheet().chooseRecentLimit(1000);
    EXPECT_EQ(sheet().pendingLimit(), 1000);
    sheet().chooseRecentLimit(0);
    sheet().setALimit();
    EXPECT_EQ(settings.recentLimit(), 0) << "nothing is left to confirm";
    sheet().chooseRecentLimit(500);
    sheet().refresh();
    sheet().setALimit();
    EXPECT_EQ(settings.recentLimit(), 0) << "a sheet opens without a question of an earlier one";
}

TEST_F(SettingsModelTest, ReadsAfreshWhatOthersStore) {
    store.setValue(SettingsKey::vectorLongEdge, 100);
    EXPECT_EQ(sheet().vectorLongEdge(), 256);
    sheet().setVectorLongEdge(1024);
    EXPECT_EQ(settings.vectorLongEdge(), 1024);
}

} // namespace

} // namespace quillary::test
