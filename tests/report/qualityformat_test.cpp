#include "host/report/qualityformat.h"
#include "synthetictake.h"

#include <gtest/gtest.h>

namespace {

std::vector<TakeQuality> twoTakes()
{
    return {takeQuality(letterTake({{"LASI", "GGMMG"}, {"RTOE,2", "PPGLG"}, {"LKNE", "MMMMM"}}, 100.0), "walk.c3d"),
            takeQuality(letterTake({{"C7", "MGG"}}, 59.94), "run \"fast\".c3d")};
}

// A marker that is never valid is listed apart and its take-long "gap" is not
// counted at take level; the CSV keeps its first columns and adds the rest after.
TEST(QualityFormat, TextAlignsColumnsPerTake)
{
    EXPECT_EQ(qualityText(twoTakes()).toStdString(),
              "walk.c3d  frames 5  rate 100 Hz  markers 3 (1 never valid)  valid 53.3 %  missing 7  filled 1  gaps 1  "
              "longest gap 2  poor 2\n"
              "marker  frames  valid %  gaps  longest gap  poor  missing  filled\n"
              "LASI         5     60.0     1            2     0        2       0\n"
              "RTOE,2       5    100.0     0            0     2        0       1\n"
              "never valid: LKNE\n"
              "\n"
              "run \"fast\".c3d  frames 3  rate 59.94 Hz  markers 1 (0 never valid)  valid 66.7 %  missing 1  filled 0  "
              "gaps 1  longest gap 1  poor 0\n"
              "marker  frames  valid %  gaps  longest gap  poor  missing  filled\n"
              "C7           3     66.7     1            1     0        1       0\n");
}

TEST(QualityFormat, CsvHasATotalRowPerTakeAndQuotesWhereNeeded)
{
    EXPECT_EQ(qualityCsv(twoTakes()).toStdString(),
              "take,marker,frames,valid_percent,gaps,longest_gap,poor,missing,filled,never_valid\n"
              "walk.c3d,,5,53.3,1,2,2,7,1,1\n"
              "walk.c3d,LASI,5,60.0,1,2,0,2,0,0\n"
              "walk.c3d,\"RTOE,2\",5,100.0,0,0,2,0,1,0\n"
              "walk.c3d,LKNE,5,0.0,1,5,0,5,0,1\n"
              "\"run \"\"fast\"\".c3d\",,3,66.7,1,1,0,1,0,0\n"
              "\"run \"\"fast\"\".c3d\",C7,3,66.7,1,1,0,1,0,0\n");
}

} // namespace
