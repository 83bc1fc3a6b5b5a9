// The quality report of small takes written as letters: G good, F fair, P poor,
// M missing, L good but filled by a gap filler.
#include "host/report/qualityformat.h"
#include "host/report/takequality.h"
#include "modules/core/sampleflags.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

TAV::Marker letterSample(uint32_t id, int64_t frame, char letter)
{
    const float cond = letter == 'G' || letter == 'L' ? 1.5f : letter == 'F' ? 0.8f : letter == 'P' ? 0.3f : 0.0f;
    return TAV::Marker{id, letter == 'L' ? FilledFlag : 0u, frame, 0, 0, 0, cond};
}

struct LetterMarker {
    std::string name;
    std::string conds; // one letter per frame, all of the same length
    std::string options = "kind=marker";
};

TAV::Frames letterTake(const std::vector<LetterMarker>& markers, double rate)
{
    TAV::Frames take;
    for (size_t n = 0; n < markers.front().conds.size(); ++n) {
        TAV::Frame f;
        f.time = int64_t(n);
        for (size_t k = 0; k < markers.size(); ++k)
            f.markers.append(letterSample(uint32_t(k), int64_t(n), markers[k].conds[n]));
        take.append(f);
    }
    for (size_t k = 0; k < markers.size(); ++k)
        take.markerInfo.emplace_back(uint32_t(k), 0, markers[k].name, markers[k].options);
    take.setProperty<double>("frequency", rate);
    return take;
}

TEST(MarkerQuality, CountsGapsAndPoorSamples)
{
    const struct {
        const char* name;
        const char* conds;
        int valid, gaps, longestGap, poor;
    } rows[] = {
        {"empty", "", 0, 0, 0, 0},
        {"gaps at both ends", "MMGGGM", 3, 2, 2, 0},
        {"all missing", "MMMM", 0, 1, 4, 0},
        {"poor runs count samples", "GPPFGPM", 6, 1, 1, 3},
        // One sample makes a run one frame too long; it is cut back.
        {"one missing sample", "M", 0, 1, 1, 0},
        {"one poor sample", "P", 1, 0, 0, 1},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.name);
        TAV::Markers track;
        for (const char* c = r.conds; *c; ++c)
            track.append(letterSample(0, track.size(), *c));
        const MarkerQuality q = markerQuality(track, "m");
        EXPECT_EQ(q.frames, int(strlen(r.conds)));
        EXPECT_EQ(q.valid, r.valid);
        EXPECT_EQ(q.gaps, r.gaps);
        EXPECT_EQ(q.longestGap, r.longestGap);
        EXPECT_EQ(q.poor, r.poor);
    }
}

// A marker that is never valid is listed apart and its take-long "gap" is not
// counted at take level; model outputs are left out unless asked for (options
// without a kind describe a marker); the CSV has a total row per take and quotes
// where needed.
TEST(QualityFormat, TextAlignsColumnsPerTakeAndCsvQuotes)
{
    const TAV::Frames walk = letterTake(
        {{"LASI", "GGMMG"}, {"RTOE,2", "PPGLG"}, {"KneeAngle", "GGGGG", "kind=angle;units=deg"}, {"LKNE", "MMMMM"}},
        100.0);
    EXPECT_EQ(takeQuality(walk, "walk.c3d", true).markers.size(), 4u);
    const std::vector<TakeQuality> takes = {
        takeQuality(walk, "walk.c3d"), takeQuality(letterTake({{"C7", "MGG", "units=mm"}}, 59.94), "run \"fast\".c3d")};
    EXPECT_EQ(qualityText(takes).toStdString(),
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
    EXPECT_EQ(qualityCsv(takes).toStdString(),
              "take,marker,frames,valid_percent,gaps,longest_gap,poor,missing,filled,never_valid\n"
              "walk.c3d,,5,53.3,1,2,2,7,1,1\n"
              "walk.c3d,LASI,5,60.0,1,2,0,2,0,0\n"
              "walk.c3d,\"RTOE,2\",5,100.0,0,0,2,0,1,0\n"
              "walk.c3d,LKNE,5,0.0,1,5,0,5,0,1\n"
              "\"run \"\"fast\"\".c3d\",,3,66.7,1,1,0,1,0,0\n"
              "\"run \"\"fast\"\".c3d\",C7,3,66.7,1,1,0,1,0,0\n");
}

} // namespace
