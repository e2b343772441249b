#include <cstdio>
#include <string>

#include "commands.h"
#include "skin_file.h"
#include "tavixskin/value_ids.h"
#include "value_names.h"

namespace skinc {

namespace {

/* Bitmaps that take turns at one place: the states of a button, the two looks of a part. */
struct Turns {
    DWORD first;
    DWORD step;  // from one state's number to the next
    int count;
};
constexpr Turns kTurns[] = {
    {BMP_FRAME_CLOSE_NORMAL, 1, 3}, {BMP_FRAME_MAX_NORMAL, 1, 3},  {BMP_FRAME_MIN_NORMAL, 1, 3},
    {BMP_DLG_CLOSE_NORMAL, 1, 3},   {BMP_DLG_MIN_NORMAL, 1, 3},    {BMP_DLG_MAX_NORMAL, 1, 3},
    {BMP_DLG_HELP_NORMAL, 1, 3},    {BMP_COMBO_DROP_NORMAL, 1, 2}, {BMP_TAB_LEFT, 3, 2},
    {BMP_TAB_TILE, 3, 2},           {BMP_TAB_RIGHT, 3, 2},         {BMP_HEAD_LEFT, 3, 2},
    {BMP_HEAD_TILE, 3, 2},          {BMP_HEAD_RIGHT, 3, 2},        {BMP_BTN_CHECK_ON, 1, 2},
    {BMP_BTN_RADIO_ON, 1, 2},       {BMP_SB_ARROW_NORMAL, 1, 3},   {BMP_SB_ARROW2_NORMAL, 1, 3},
    {BMP_SB_TRACK, 1, 2},           {BMP_SB_THUMB_TOP, 3, 2},      {BMP_SB_THUMB_BOTTOM, 3, 2},
    {BMP_SB_THUMB_TILE, 3, 2},      {BMP_MENU_CHECK, 1, 2},
};

class Checker {
public:
    explicit Checker(const std::filesystem::path& file) : m_file(file.string()), m_skin(file) {}

    int Run() {
        for (const std::string& storage : m_skin.BrokenRecords())
            Report(storage, "the record is missing or of a wrong size");
        for (const StoredBitmap& bitmap : m_skin.Bitmaps()) CheckBitmap(bitmap);
        for (const TSkinFieldSet set : {skinSetSmall, skinSetLarge})
            for (const Turns& turns : kTurns) CheckSizes(turns, set);
        CheckRectangle(SZ_FRAME_BUTTONS);
        CheckRectangle(SZ_DLG_BUTTONS);
        if (m_count == 0) std::printf("%s: no mistakes found\n", m_file.c_str());
        return m_count == 0 ? 0 : 1;
    }

private:
    void Report(const std::string& key, const std::string& what) {
        std::printf("%s: %s: %s\n", m_file.c_str(), key.c_str(), what.c_str());
        ++m_count;
    }

    static std::string Key(const StoredBitmap& bitmap) {
        const std::string set = SetName(bitmap.field->set);
        return FindValue(BitmapNames(), bitmap.field->id)->name + (set.empty() ? "" : "." + set);
    }

    static bool IsState(DWORD id) {
        for (const Turns& turns : kTurns)
            for (int i = 1; i < turns.count; ++i)
                if (id == turns.first + turns.step * static_cast<DWORD>(i)) return true;
        return false;
    }

    // Whether some painter misses it. Spare bitmaps and the host's own are nobody's loss.
    static bool IsNeeded(DWORD id) { return id < BMP_DOCK_00 && !FindValue(BitmapNames(), id)->IsSpare(); }

    void CheckBitmap(const StoredBitmap& bitmap) {
        if (!bitmap.image.empty()) {
            if (!bitmap.readable) Report(Key(bitmap), "the stream '" + bitmap.stream + "' is no BMP image");
            return;
        }
        if (!IsNeeded(bitmap.field->id)) return;
        const std::string what = IsState(bitmap.field->id) ? "the state is missing" : "the slot is empty";
        Report(Key(bitmap),
               what + (bitmap.effective ? ", and shows " + Key(*bitmap.effective) : ", and shows nothing"));
    }

    void CheckSizes(const Turns& turns, TSkinFieldSet set) {
        const StoredBitmap* first = m_skin.Bitmap(turns.first, set);
        // What has one set only is looked at once.
        if (!first || (first->field->set == skinSetBoth && set == skinSetLarge) || !first->readable) return;
        for (int i = 1; i < turns.count; ++i) {
            const StoredBitmap* other = m_skin.Bitmap(turns.first + turns.step * static_cast<DWORD>(i), set);
            if (!other || !other->readable ||
                (other->width == first->width && other->height == first->height))
                continue;
            Report(Key(*other), "is " + Size(*other) + ", but " + Key(*first) + " is " + Size(*first) +
                                    "; expected one size");
        }
    }

    static std::string Size(const StoredBitmap& bitmap) {
        return std::to_string(bitmap.width) + "x" + std::to_string(bitmap.height);
    }

    void CheckRectangle(DWORD id) {
        const RECT stored = m_skin.Rectangle(NumberField(false, id));
        const RECT kept = PackedAndUnpacked(stored);
        const struct {
            const char* name;
            LONG stored, kept;
        } members[] = {{"left", stored.left, kept.left},
                       {"top", stored.top, kept.top},
                       {"width", stored.right, kept.right},
                       {"height", stored.bottom, kept.bottom}};
        for (const auto& m : members) {
            if (m.stored == m.kept) continue;
            Report(std::string(FindValue(SizeNames(), id)->name) + "." + m.name,
                   std::to_string(m.stored) + " does not survive packing and becomes " +
                       std::to_string(m.kept) + "; expected -128 to 127");
        }
    }

    std::string m_file;
    SkinFile m_skin;
    int m_count = 0;
};

}  // namespace

int Check(const std::filesystem::path& skin) { return Checker(skin).Run(); }

}  // namespace skinc
