/* The authoring tool, run as its users run it. */
#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>

#include "draw/skin_bitmap.h"
#include "support/test_skin.h"
#include "tavixskin/skin_face.h"
#include "tools/skinc_run.h"

namespace tavix_test {
namespace {

using nlohmann::json;

std::unique_ptr<CTavixSkinFace> Load(const std::filesystem::path& file) {
    auto face = std::make_unique<CTavixSkinFace>();
    face->LoadSkin(file.string().c_str());
    return face;
}

/* The first value in which two faces differ, or nothing. */
std::string Difference(const CTavixSkinFace& a, const CTavixSkinFace& b) {
    for (DWORD id = 0; id < TAVIX_VALUE_COUNT; ++id) {
        if (a.GetColor(id) != b.GetColor(id)) return "colour " + std::to_string(id);
        if (a.GetSize(id) != b.GetSize(id)) return "size " + std::to_string(id);
        CBitmap* first = a.GetBmp(id);
        CBitmap* second = b.GetBmp(id);
        if (!first != !second) return "presence of bitmap " + std::to_string(id);
        if (!first) continue;
        const tavix::PixelImage one = tavix::ReadPixels(*first);
        const tavix::PixelImage other = tavix::ReadPixels(*second);
        if (one.width != other.width || one.height != other.height || one.pixels != other.pixels)
            return "bitmap " + std::to_string(id);
    }
    return "";
}

TEST(SkincBuild, TheFileLoadsToTheManifestsValues) {
    WorkFolder folder;
    folder.Write("tile.png", FlatPng(3, 5, 0x102030FF));
    folder.Write("chequer.bmp", ChequerBmp());
    folder.Write("manifest.json", R"({
        "name": "Small",
        "bitmaps": { "BMP_FRAME_CAPTION_TILE": "tile.png", "BMP_BTN_CHECK_ON": "chequer.bmp",
                     "BMP_SB_TRACK": { "small": "tile.png", "large": "chequer.bmp" } },
        "colours": { "CLR_TRANSPARENT": "#FF8001", "CLR_HIGHLIGHT": "0x01020304" },
        "sizes": { "SZ_FRAME_LEFT": 7, "SZ_FRAME_BOTTOM": -3,
                   "SZ_FRAME_BUTTONS": { "left": -40, "top": 3, "width": 20, "height": 21 } } })");
    const SkincRun run = folder.Skinc("build manifest.json -o small.skn");
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const auto face = Load(folder / "small.skn");
    EXPECT_EQ(face->GetColor(CLR_TRANSPARENT), RGB(0xFF, 0x80, 0x01));
    EXPECT_EQ(face->GetColor(CLR_HIGHLIGHT), 0x01020304u);
    EXPECT_EQ(face->GetSize(SZ_FRAME_LEFT), 7u);
    EXPECT_EQ(static_cast<int>(face->GetSize(SZ_FRAME_BOTTOM)), -3);
    EXPECT_EQ(face->GetSize(SZ_FRAME_BUTTONS), 0x1514D803u);
    const tavix::PixelImage tile = tavix::ReadPixels(*face->GetBmp(BMP_FRAME_CAPTION_TILE));
    EXPECT_EQ(tile.width, 3);
    EXPECT_EQ(tile.height, 5);
    EXPECT_EQ(tile.pixels, std::vector<COLORREF>(15, RGB(0x10, 0x20, 0x30)));
    BITMAP facts{};
    ::GetObjectA(face->GetBmp(BMP_BTN_CHECK_ON)->GetSafeHandle(), sizeof facts, &facts);
    EXPECT_EQ(facts.bmBitsPixel, 1) << "a BMP keeps its depth";
    EXPECT_EQ(face->GetBmp(BMP_FRAME_CLOSE_NORMAL), nullptr);
}

TEST(SkincBuild, ReplacesAnOlderFileAndLeavesNothingBeside) {
    WorkFolder folder;
    folder.Write("manifest.json", R"({ "sizes": { "SZ_FRAME_LEFT": 1 } })");
    ASSERT_EQ(folder.Skinc("build manifest.json -o x.skn").exitCode, 0);
    folder.Write("manifest.json", R"({ "sizes": { "SZ_FRAME_LEFT": 2 } })");
    ASSERT_EQ(folder.Skinc("build manifest.json -o x.skn").exitCode, 0);
    EXPECT_EQ(Load(folder / "x.skn")->GetSize(SZ_FRAME_LEFT), 2u);
    EXPECT_FALSE(folder.Has("x.skn.pending"));
}

TEST(SkincBuild, TheSameSourcesGiveTheSameBytes) {
    WorkFolder folder;
    folder.Write("tile.png", FlatPng(3, 5, 0x102030FF));
    folder.Write("manifest.json", R"({ "bitmaps": { "BMP_FRAME_CAPTION_TILE": "tile.png" } })");
    ASSERT_EQ(folder.Skinc("build manifest.json -o a.skn").exitCode, 0);
    ASSERT_EQ(folder.Skinc("build manifest.json -o b.skn").exitCode, 0);
    const std::string a = folder.Read("a.skn");
    const std::string b = folder.Read("b.skn");
    EXPECT_EQ(a.size(), b.size());
    // The directory holds the times of making; all else agrees.
    EXPECT_EQ(Difference(*Load(folder / "a.skn"), *Load(folder / "b.skn")), "");
}

struct Mistake {
    const char* name;
    const char* manifest;
    const char* key;       // what the message names
    const char* expected;  // and what it says was expected
};

class SkincMistake : public testing::TestWithParam<Mistake> {};
INSTANTIATE_TEST_SUITE_P(
    Manifests, SkincMistake,
    testing::Values(
        Mistake{"NoJson", "{ \"name\": ", "manifest.json", "JSON"},
        Mistake{"NoObject", "[]", "manifest.json", "expected an object"},
        Mistake{"UnknownGroup", R"({ "colors": {} })", "colors", "expected name, bitmaps, colours or sizes"},
        Mistake{"NameNoText", R"({ "name": 5 })", "name", "expected a text"},
        Mistake{"GroupNoObject", R"({ "sizes": 5 })", "sizes", "expected an object"},
        Mistake{"UnknownValue", R"({ "sizes": { "SZ_NONE": 5 } })", "sizes.SZ_NONE", "no such value"},
        Mistake{"SystemColour", R"({ "colours": { "CLR_TEXT": "#000000" } })", "colours.CLR_TEXT",
                "remove it"},
        Mistake{"TwinKey", R"({ "sizes": { "SZ_FRAME_LEFT": 1, "SZ_FRAME_LEFT": 2 } })", "SZ_FRAME_LEFT",
                "twice"},
        Mistake{"MissingImage", R"({ "bitmaps": { "BMP_MENU_CHECK": "none.png" } })",
                "bitmaps.BMP_MENU_CHECK", "does not exist"},
        Mistake{"NoPath", R"({ "bitmaps": { "BMP_MENU_CHECK": 7 } })", "bitmaps.BMP_MENU_CHECK",
                "expected the path"},
        Mistake{"NoImage", R"({ "bitmaps": { "BMP_MENU_CHECK": "text.png" } })", "text.png", "PNG or BMP"},
        Mistake{"NoBitmap", R"({ "bitmaps": { "BMP_MENU_CHECK": "text.bmp" } })", "text.bmp", "BMP"},
        Mistake{"CutImage", R"({ "bitmaps": { "BMP_MENU_CHECK": "cut.png" } })", "cut.png", ""},
        Mistake{"Transparent", R"({ "bitmaps": { "BMP_MENU_CHECK": "glass.png" } })", "glass.png",
                "key colour"},
        Mistake{"OneFileForTwoSets", R"({ "bitmaps": { "BMP_SB_TRACK": "tile.png" } })",
                "bitmaps.BMP_SB_TRACK", "small"},
        Mistake{"UnknownSet", R"({ "bitmaps": { "BMP_SB_TRACK": { "huge": "tile.png" } } })",
                "BMP_SB_TRACK.huge", "small or large"},
        Mistake{"ColourWord", R"({ "colours": { "CLR_HIGHLIGHT": "blue" } })", "colours.CLR_HIGHLIGHT",
                "#RRGGBB"},
        Mistake{"ColourShort", R"({ "colours": { "CLR_HIGHLIGHT": "#12345" } })", "colours.CLR_HIGHLIGHT",
                "#RRGGBB"},
        Mistake{"ColourNumber", R"({ "colours": { "CLR_HIGHLIGHT": 5 } })", "colours.CLR_HIGHLIGHT",
                "#RRGGBB"},
        Mistake{"SizeText", R"({ "sizes": { "SZ_FRAME_LEFT": "5" } })", "sizes.SZ_FRAME_LEFT",
                "whole number"},
        Mistake{"SizeBroken", R"({ "sizes": { "SZ_FRAME_LEFT": 1.5 } })", "sizes.SZ_FRAME_LEFT",
                "whole number"},
        Mistake{"SizeHuge", R"({ "sizes": { "SZ_FRAME_LEFT": 18446744073709551615 } })",
                "sizes.SZ_FRAME_LEFT", "whole number"},
        Mistake{"RectNoObject", R"({ "sizes": { "SZ_DLG_BUTTONS": 5 } })", "sizes.SZ_DLG_BUTTONS",
                "left, top, width and height"},
        Mistake{"RectLacks", R"({ "sizes": { "SZ_DLG_BUTTONS": { "left": 1, "top": 1, "width": 1 } } })",
                "sizes.SZ_DLG_BUTTONS", "height"},
        Mistake{"RectUnknown", R"({ "sizes": { "SZ_DLG_BUTTONS": { "right": 1 } } })", "SZ_DLG_BUTTONS.right",
                "left, top, width and height"},
        Mistake{"RectTooFar",
                R"({ "sizes": { "SZ_DLG_BUTTONS": { "left": -129, "top": 1, "width": 1, "height": 1 } } })",
                "SZ_DLG_BUTTONS.left", "-128 to 127"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(SkincMistake, IsNamedAndLeavesTheOldFileAlone) {
    WorkFolder folder;
    folder.Write("tile.png", FlatPng(3, 5, 0x102030FF));
    folder.Write("text.png", "no picture");
    folder.Write("text.bmp", "no picture");
    folder.Write("cut.png", FlatPng(30, 30, 0x102030FF).substr(0, 400));
    folder.Write("glass.png", FlatPng(2, 2, 0x10203080));
    folder.Write("old.skn", "as it was");
    folder.Write("manifest.json", GetParam().manifest);
    const SkincRun run = folder.Skinc("build manifest.json -o old.skn");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("manifest.json"), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find(GetParam().key), std::string::npos) << run.errors;
    EXPECT_NE(run.errors.find(GetParam().expected), std::string::npos) << run.errors;
    EXPECT_EQ(folder.Read("old.skn"), "as it was");
    EXPECT_FALSE(folder.Has("old.skn.pending"));
}

TEST(SkincMistakes, WithoutAManifestOrAPlaceToWrite) {
    WorkFolder folder;
    EXPECT_EQ(folder.Skinc("build none.json -o x.skn").exitCode, 2);
    EXPECT_FALSE(folder.Has("x.skn"));
    folder.Write("manifest.json", "{}");
    const SkincRun run = folder.Skinc("build manifest.json -o nowhere/x.skn");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("x.skn"), std::string::npos) << run.errors;
}

TEST(SkincMistakes, OnTheCommandLine) {
    WorkFolder folder;
    EXPECT_EQ(folder.Skinc("").exitCode, 2);
    EXPECT_EQ(folder.Skinc("paint x").exitCode, 2);
    EXPECT_EQ(folder.Skinc("build manifest.json").exitCode, 2);
    const SkincRun help = folder.Skinc("--help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* command : {"build", "extract", "info", "check"})
        EXPECT_NE(help.output.find(command), std::string::npos) << command;
}

TEST(SkincMistakes, WhatIsNoSkinFile) {
    WorkFolder folder;
    folder.Write("text.skn", "no skin");
    folder.Write("empty.skn", "");
    for (const char* file : {"text.skn", "empty.skn", "none.skn"}) {
        for (const char* command : {"info ", "check ", "extract "}) {
            const bool extracts = std::string(command) == "extract ";
            const SkincRun run = folder.Skinc(command + std::string(file) + (extracts ? " out" : ""));
            EXPECT_EQ(run.exitCode, 2) << command << file;
            EXPECT_NE(run.errors.find(file), std::string::npos) << run.errors;
        }
    }
    EXPECT_FALSE(folder.Has("out"));
}

TEST(SkincExtract, WhatItWritesBuildsToTheSameValues) {
    TestSkin skin;
    // Carried-over bitmaps, pictures that are not flat, and raw numbers come back too.
    skin.RemoveBitmap(BMP_FRAME_CLOSE_HOT).RemoveBitmap(BMP_TAB_PANE_TOP);
    skin.SetBitmap(BMP_MENU_CHECK, 9, 7, [](int x, int y) { return RGB(x * 20, y * 30, 200); });
    skin.SetColour(CLR_MENU_BACK, 0xFF123456).SetSize(SZ_HEAD_SPARE, 0xFFFFFFF0);
    skin.SetLargeBitmap(BMP_SB_TRACK, 20, 6, RGB(1, 2, 3));
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "first.skn");
    const std::string before = folder.Read("first.skn");
    const SkincRun extracted = folder.Skinc("extract first.skn sources");
    ASSERT_EQ(extracted.exitCode, 0) << extracted.errors;
    EXPECT_EQ(folder.Read("first.skn"), before) << "the file is only read";
    const SkincRun built = folder.Skinc("build sources/manifest.json -o second.skn");
    ASSERT_EQ(built.exitCode, 0) << built.errors;
    EXPECT_EQ(Difference(*Load(folder / "first.skn"), *Load(folder / "second.skn")), "");
}

TEST(SkincExtract, DoesNotWriteOverAManifest) {
    TestSkin skin;
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "x.skn");
    ASSERT_EQ(folder.Skinc("extract x.skn sources").exitCode, 0);
    const SkincRun again = folder.Skinc("extract x.skn sources");
    EXPECT_EQ(again.exitCode, 2);
    EXPECT_NE(again.errors.find("manifest.json"), std::string::npos);
}

TEST(SkincInfo, ListsEveryValueWithItsNumberNameAndValue) {
    TestSkin skin;
    skin.RemoveBitmap(BMP_FRAME_CLOSE_HOT);
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "x.skn");
    const SkincRun run = folder.Skinc("info x.skn --json");
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    const json rows = json::parse(run.output);
    const auto find = [&](const char* name, const char* set = "") -> json {
        for (const json& row : rows)
            if (row["name"] == name && row.value("set", "") == set) return row;
        return {};
    };
#define EXPECT_LISTED(number, name, record, use)                                                           \
    EXPECT_EQ(find(#name, number >= 79 && number <= 92 && #name[0] == 'B' ? "large" : "").value("id", -1), \
              number);
    TAVIX_BITMAP_IDS(EXPECT_LISTED)
    TAVIX_COLOUR_IDS(EXPECT_LISTED)
    TAVIX_SIZE_IDS(EXPECT_LISTED)
#undef EXPECT_LISTED
    EXPECT_EQ(find("BMP_FRAME_CAPTION_RIGHT")["width"], 10);
    EXPECT_EQ(find("BMP_FRAME_CAPTION_RIGHT")["height"], 24);
    EXPECT_EQ(find("BMP_FRAME_CLOSE_HOT")["shows"], "BMP_FRAME_CLOSE_NORMAL");
    EXPECT_EQ(find("CLR_TRANSPARENT")["value"], static_cast<DWORD>(TestSkin::kTransparent));
    EXPECT_TRUE(find("CLR_TEXT")["value"].is_null());
    EXPECT_EQ(find("SZ_FRAME_BUTTONS")["value"]["left"], -60);
    const SkincRun table = folder.Skinc("info x.skn");
    EXPECT_EQ(table.exitCode, 0);
    EXPECT_NE(table.output.find("BMP_FRAME_CAPTION_RIGHT"), std::string::npos);
    EXPECT_NE(table.output.find("10x24x24"), std::string::npos);
}

TEST(SkincCheck, FindsNothingInACompleteSkin) {
    TestSkin skin;
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "x.skn");
    const SkincRun run = folder.Skinc("check x.skn");
    // The test skin's tabs and scroll bars are made of sizes that differ; nothing else is found.
    EXPECT_EQ(run.output.find("missing"), std::string::npos) << run.output;
    EXPECT_EQ(run.output.find("empty"), std::string::npos) << run.output;
}

TEST(SkincCheck, NamesEachMistake) {
    TestSkin skin;
    skin.RemoveBitmap(BMP_FRAME_MAX_HOT).RemoveBitmap(BMP_LIST_TOP).RemoveBitmap(BMP_DOCK_31);
    skin.SetBitmapSize(BMP_DLG_CLOSE_DOWN, 9, 9).SetButtons(SZ_FRAME_BUTTONS, -200, 4, 16, 16);
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "x.skn");
    const SkincRun run = folder.Skinc("check x.skn");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("BMP_FRAME_MAX_HOT: the state is missing, and shows BMP_FRAME_MAX_NORMAL"),
              std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("BMP_LIST_TOP: the slot is empty"), std::string::npos);
    EXPECT_NE(run.output.find("BMP_DLG_CLOSE_DOWN: is 9x9, but BMP_DLG_CLOSE_NORMAL is 16x16"),
              std::string::npos);
    EXPECT_NE(run.output.find("SZ_FRAME_BUTTONS.left: -200 does not survive packing and becomes 56"),
              std::string::npos);
    EXPECT_EQ(run.output.find("BMP_DOCK_31"), std::string::npos)
        << "nobody in the library misses a dock bar bitmap";
}

TEST(SkincCheck, AMinusHundredAndTwentyEightSurvives) {
    TestSkin skin;
    skin.SetButtons(SZ_FRAME_BUTTONS, -128, 4, 16, 16);
    WorkFolder folder;
    std::filesystem::copy_file(skin.Write(), folder / "x.skn");
    EXPECT_EQ(folder.Skinc("check x.skn").output.find("SZ_FRAME_BUTTONS"), std::string::npos);
}

TEST(Porcelain, BuildsAndHasNoMistakes) {
    WorkFolder folder;
    const std::string manifest = std::string("\"") + TAVIX_PORCELAIN_MANIFEST + "\"";
    const SkincRun built = folder.Skinc("build -o p.skn -- " + manifest);
    ASSERT_EQ(built.exitCode, 0) << built.errors;
    const SkincRun checked = folder.Skinc("check p.skn");
    EXPECT_EQ(checked.exitCode, 0) << checked.output;
    const auto face = Load(folder / "p.skn");
#define EXPECT_LOADED(number, name, record, use) EXPECT_NE(face->GetBmp(name), nullptr) << #name;
    TAVIX_BITMAP_IDS(EXPECT_LOADED)
#undef EXPECT_LOADED
}

}  // namespace
}  // namespace tavix_test
