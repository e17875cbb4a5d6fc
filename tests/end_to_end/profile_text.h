// The text of a profile file, as the page must write it or as a test prepares it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace kvn::end_to_end {

struct GestureText {
    std::string stroke;
    std::string function;
    std::string memo;
    std::string keys;
};

struct ProgramText {
    std::string name;
    std::string path;
};

struct ProfileText {
    std::string name = "Default";
    std::map<std::string, std::string> elements{};  // only those that differ from a new profile
    std::vector<GestureText> gestures{};
    std::vector<ProgramText> programs{};
};

// The file of the sample mouse.
std::string ProfileFileText(const std::vector<ProfileText>& profiles, int selected = 0);

}  // namespace kvn::end_to_end
