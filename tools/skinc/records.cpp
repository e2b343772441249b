#include "records.h"

namespace skinc {

std::vector<const TSkinRecordLayout*> AllLayouts() {
    std::vector<const TSkinRecordLayout*> layouts;
    for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind)
        layouts.push_back(GetSkinRecordLayout(static_cast<TSkinType>(kind)));
    return layouts;
}

Records::Records() {
    for (const TSkinRecordLayout* layout : AllLayouts()) m_images[layout->kind].resize(layout->size);
}

TSkinThemes Records::Themes() {
    TSkinThemes themes;
    themes.pGlobal = Image(skinGlobal);
    themes.pButton = Image(skinButton);
    themes.pFrame = Image(skinFrame);
    themes.pDialog = Image(skinDialog);
    themes.pToolBar = Image(skinToolBar);
    themes.pCombobox = Image(skinCombobox);
    themes.pTabCtrl = Image(skinTabCtrl);
    themes.pHeadCtrl = Image(skinHeadCtrl);
    themes.pEdit = Image(skinEdit);
    themes.pListBox = Image(skinListBox);
    themes.pScrollbar = Image(skinScrollbar);
    themes.pMenu = Image(skinMenu);
    themes.pDockBar = Image(skinDockBar);
    return themes;
}

std::vector<FieldPlace> BitmapFields(DWORD id) {
    std::vector<FieldPlace> places;
    for (const TSkinRecordLayout* layout : AllLayouts())
        for (const TSkinField& field : *layout)
            if (field.kind == skinFieldBitmap && field.id == id) places.push_back({layout, &field});
    return places;
}

FieldPlace NumberField(bool colour, DWORD id) {
    for (const TSkinRecordLayout* layout : AllLayouts()) {
        for (const TSkinField& field : *layout) {
            if (field.kind == skinFieldBitmap || field.id != id) continue;
            if ((field.kind == skinFieldColour) == colour) return {layout, &field};
        }
    }
    return {nullptr, nullptr};
}

std::string SetName(TSkinFieldSet set) {
    switch (set) {
        case skinSetSmall:
            return "small";
        case skinSetLarge:
            return "large";
        default:
            return "";
    }
}

}  // namespace skinc
