#include "host/report/qualityformat.h"
#include "synthetictake.h"

#include <gtest/gtest.h>

namespace {

std::vector<TakeQuality> twoTakes()
{
    return {takeQuality(letterTake({{"LASI", "GGMMG"}, {"RTOE,2", "PPGGG"}}, 100.0), "walk.c3d"),
            takeQuality(letterTake({{"C7", "MGG"}}, 59.94), "run \"fast\".c3d")};
}

TEST(QualityFormat, TextAlignsColumnsPerTake)
{
    EXPECT_EQ(qualityText(twoTakes()).toStdString(),
              "walk.c3d  frames 5  rate 100 Hz  markers 2  valid 80.0 %  gaps 1  longest gap 2  poor 2\n"
              "marker  frames  valid %  gaps  longest gap  poor\n"
              "LASI         5     60.0     1            2     0\n"
              "RTOE,2       5    100.0     0            0     2\n"
              "\n"
              "run \"fast\".c3d  frames 3  rate 59.94 Hz  markers 1  valid 66.7 %  gaps 1  longest gap 1  poor 0\n"
              "marker  frames  valid %  gaps  longest gap  poor\n"
              "C7           3     66.7     1            1     0\n");
}

TEST(QualityFormat, CsvHasATotalRowPerTakeAndQuotesWhereNeeded)
{
    EXPECT_EQ(qualityCsv(twoTakes()).toStdString(),
              "take,marker,frames,valid_percent,gaps,longest_gap,poor\n"
              "walk.c3d,,5,80.0,1,2,2\n"
              "walk.c3d,LASI,5,60.0,1,2,0\n"
              "walk.c3d,\"RTOE,2\",5,100.0,0,0,2\n"
              "\"run \"\"fast\"\".c3d\",,3,66.7,1,1,0\n"
              "\"run \"\"fast\"\".c3d\",C7,3,66.7,1,1,0\n");
}

} // namespace
