#include "service/settings/reading_schedule.h"

#include <gtest/gtest.h>

namespace kvn::service {
namespace {

TEST(ReadingScheduleTest, NothingIsDueWithoutAChange) {
    EXPECT_FALSE(ReadingSchedule().Due());
    EXPECT_FALSE(ReadingSchedule().IsDue(UINT64_MAX));
}

TEST(ReadingScheduleTest, ReadsAMomentAfterTheLastChange) {
    ReadingSchedule schedule;
    schedule.NoteChange(1000);
    EXPECT_FALSE(schedule.IsDue(1099));
    EXPECT_TRUE(schedule.IsDue(1100));
    schedule.NoteChange(1090);
    EXPECT_FALSE(schedule.IsDue(1189));
    EXPECT_TRUE(schedule.IsDue(1190));
}

TEST(ReadingScheduleTest, ReadsThreeSecondsAfterTheFirstOfManyChanges) {
    ReadingSchedule schedule;
    for (std::uint64_t now = 1000; now <= 4000; now += 50) schedule.NoteChange(now);
    EXPECT_EQ(schedule.Due(), 4000U);
}

TEST(ReadingScheduleTest, BeginsAgainAfterAReading) {
    ReadingSchedule schedule;
    schedule.NoteChange(1000);
    schedule.NoteReading();
    EXPECT_FALSE(schedule.Due());
    schedule.NoteChange(9000);
    EXPECT_EQ(schedule.Due(), 9100U);
}

TEST(ReadingScheduleTest, RepeatsAFailedReadingAFewTimes) {
    ReadingSchedule schedule;
    schedule.NoteChange(0);
    for (const std::uint64_t wait : ReadingSchedule::kRetries) {
        schedule.NoteReading();
        schedule.NoteFailure(1000);
        EXPECT_EQ(schedule.Due(), 1000 + wait);
    }
    schedule.NoteReading();
    schedule.NoteFailure(1000);
    EXPECT_FALSE(schedule.Due());
    schedule.NoteChange(1000);
    schedule.NoteReading();
    schedule.NoteFailure(2000);
    EXPECT_EQ(schedule.Due(), 3000U);
}

TEST(ReadingScheduleTest, AChangeComesBeforeARetry) {
    ReadingSchedule schedule;
    schedule.NoteFailure(1000);
    schedule.NoteChange(1000);
    schedule.NoteFailure(1000);
    EXPECT_EQ(schedule.Due(), 1100U);
}

}  // namespace
}  // namespace kvn::service
