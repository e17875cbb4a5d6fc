#include "tests/end_to_end/profile_text.h"

#include <array>

namespace kvn::end_to_end {
namespace {

struct ElementRow {
    const char* name;
    const char* newText;
};

constexpr std::array<ElementRow, 18> kElements{{
    {"lbutton", "1"},
    {"lbutton_etcKey", ""},
    {"rbutton", "2"},
    {"rbutton_etcKey", ""},
    {"tbutton", "9"},
    {"tbutton_etcKey", ""},
    {"button4", "3"},
    {"button4_etcKey", ""},
    {"button5", "4"},
    {"button5_etcKey", ""},
    {"scrolls", "4"},
    {"tiltleft", "33"},
    {"tiltleft_etcKey", ""},
    {"tiltright", "34"},
    {"tiltright_etcKey", ""},
    {"hspeed", "5"},
    {"hlotate", "5"},
    {"hcount", "2"},
}};

std::string Line(int depth, const std::string& content) {
    return std::string(static_cast<std::size_t>(depth) * 4, ' ') + content + "\r\n";
}

std::string Element(int depth, const std::string& name, const std::string& text) {
    return Line(depth, '<' + name + '>' + text + "</" + name + '>');
}

std::string ProgramElement(const ProgramText& program) {
    return Line(2, "<Application>") + Element(3, "name", program.name) + Element(3, "path", program.path) +
           Line(2, "</Application>");
}

std::string GestureElement(const GestureText& gesture) {
    return Line(2, "<Gesture>") + Element(3, "Key", gesture.stroke) + Element(3, "Function", gesture.function) +
           Element(3, "Memo", gesture.memo) + Element(3, "EtcKey", gesture.keys) + Line(2, "</Gesture>");
}

}  // namespace

std::string ProfileFileText(const std::vector<ProfileText>& profiles, int selected) {
    std::string text = Line(0, R"(<?xml version="1.0" encoding="utf-8" standalone="yes" ?>)") + Line(0, "<data>") +
                       Element(1, "vid", "4660") + Element(1, "pid", "22136") +
                       Element(1, "select_profile", std::to_string(selected));
    for (const ProfileText& profile : profiles) {
        text += Line(1, "<profile>") + Element(2, "profname", profile.name);
        for (const ElementRow& row : kElements) {
            const auto changed = profile.elements.find(row.name);
            text += Element(2, row.name, changed == profile.elements.end() ? row.newText : changed->second);
        }
        for (const ProgramText& program : profile.programs) text += ProgramElement(program);
        for (const GestureText& gesture : profile.gestures) text += GestureElement(gesture);
        text += Line(1, "</profile>");
    }
    return text + Line(0, "</data>");
}

}  // namespace kvn::end_to_end
