#include "model/function_catalogue.h"

#include <algorithm>

namespace kvn::model {
namespace {

// The one version that has charms, and no Flip3D.
constexpr OsVersion kWindows8{6, 2};

bool IsCharmFunction(FunctionCode code) {
    return code >= kFirstCharmFunction && code <= kLastCharmFunction;
}

// The row as this version of Windows offers it; nothing if it does not.
std::optional<CatalogueRow> OfferedRow(const CatalogueRow& row, OsVersion os) {
    if (row.code == kFunctionFlip3D && os.major == 5) return CatalogueRow{IDS_FUNCTION_WINDOWS_TAB, row.code};
    if (row.code == kFunctionFlip3D && os == kWindows8) return std::nullopt;
    if (IsCharmFunction(row.code) && os != kWindows8) return std::nullopt;
    return row;
}

template <typename Predicate>
std::vector<CatalogueRow> OfferedRows(OsVersion os, Predicate isWanted) {
    std::vector<CatalogueRow> offered;
    for (const CatalogueRow& row : kFunctionCatalogue) {
        if (!isWanted(row.code)) continue;
        if (const auto shown = OfferedRow(row, os)) offered.push_back(*shown);
    }
    return offered;
}

}  // namespace

std::optional<unsigned> TextIdOf(FunctionCode code) {
    const auto row = std::ranges::find(kFunctionCatalogue, code, &CatalogueRow::code);
    if (row == kFunctionCatalogue.end()) return std::nullopt;
    return row->textId;
}

std::vector<CatalogueRow> FunctionsForSlot(OsVersion os, bool slotIsOnMouse) {
    return OfferedRows(os, [=](FunctionCode code) {
        const bool needsButton = code == kFunctionGesture || code == kFunctionShift;
        return code != kFunctionNone && (slotIsOnMouse || !needsButton);
    });
}

std::vector<CatalogueRow> FunctionsForGesture(OsVersion os) {
    return OfferedRows(os, [](FunctionCode code) {
        return code != kFunctionNone && code != kFunctionGesture && code != kFunctionOff;
    });
}

}  // namespace kvn::model
