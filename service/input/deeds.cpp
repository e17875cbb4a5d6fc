#include "service/input/deeds.h"

#include <algorithm>
#include <array>

#include "service/input/key_sending.h"
#include "service/input/key_texts.h"
#include "service/input/program_opener.h"
#include "service/input/window_commands.h"

namespace kvn::service {
namespace {

struct NoteRow {
    Cause cause;
    const wchar_t* text;
};

constexpr std::array<NoteRow, 7> kNotes{{
    {Cause::Function, L"nothing"},
    {Cause::Gesture, L"nothing"},
    {Cause::UnknownStroke, L"no gesture has this stroke"},
    {Cause::NoStroke, L"no stroke"},
    {Cause::GivenUp, L"stroke given up"},
    {Cause::GivesUp, L"gave the stroke up"},
    {Cause::Asked, L"asked by the page"},
}};

std::wstring TextOfNote(const Order& order) {
    const auto row = std::ranges::find(kNotes, order.cause, &NoteRow::cause);
    return row == kNotes.end() ? L"nothing" : row->text;
}

std::wstring DoInput(const Order& order, const FunctionRow& row, Holdings& holdings) {
    if (order.kind == OrderKind::Begin) {
        holdings.Begin(order, row);
    } else {
        holdings.Act(order, row);
    }
    return TextOfInput(order, row);
}

std::wstring DoFunction(const Order& order, Holdings& holdings) {
    const FunctionRow* const row = FindFunction(order.function);
    if (row == nullptr) return L"nothing";
    if (Holdings::CanDo(*row)) return DoInput(order, *row, holdings);
    if (row->deed == Deed::Open) return OpenProgram(row->program);
    return DoWindowCommand(row->deed);
}

std::wstring Scroll(const Order& order) {
    InputBatch batch;
    batch.HorizontalWheel(order.amount);
    batch.Send();
    return order.amount < 0 ? L"scrolled left" : L"scrolled right";
}

}  // namespace

std::wstring DoOrder(const Order& order, Holdings& holdings) {
    if (order.kind == OrderKind::Note) return TextOfNote(order);
    if (order.kind == OrderKind::Scroll) return Scroll(order);
    return DoFunction(order, holdings);
}

bool CountsAsAction(const Order& order) {
    if (order.kind == OrderKind::Scroll) return order.isOfPress;
    return order.kind == OrderKind::Begin || order.kind == OrderKind::Act;
}

}  // namespace kvn::service
