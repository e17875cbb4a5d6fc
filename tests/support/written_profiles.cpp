#include "tests/support/written_profiles.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace kvn::test {
namespace {

std::string Element(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}

}  // namespace

std::string ProfileText(const std::string& name, const std::vector<ProfileElement>& elements) {
    std::string content = Element("profname", name);
    for (const ProfileElement& element : elements) content += Element(element.first, element.second);
    return Element("profile", content);
}

std::string ProfileFileText(const std::vector<std::string>& profiles, int selected) {
    std::string content = Element("select_profile", std::to_string(selected));
    for (const std::string& profile : profiles) content += profile;
    return R"(<?xml version="1.0" encoding="utf-8" standalone="yes" ?>)" + Element("data", content);
}

void WriteFileText(const std::wstring& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(std::filesystem::path(path), std::ios::binary) << text;
}

std::string ReadFileText(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool FileExists(const std::wstring& path) {
    return std::filesystem::exists(path);
}

std::string ElementIn(const std::string& fileText, int profileIndex, const std::string& element) {
    std::size_t begin = 0;
    for (int i = 0; i <= profileIndex; ++i) {
        begin = fileText.find("<profile>", begin + 1);
        if (begin == std::string::npos) return "(none)";
    }
    const std::string part = fileText.substr(begin, fileText.find("</profile>", begin) - begin);
    const std::size_t open = part.find("<" + element + ">");
    if (open == std::string::npos) return part.find("<" + element + " />") == std::string::npos ? "(none)" : "";
    const std::size_t content = open + element.size() + 2;
    return part.substr(content, part.find("</", content) - content);
}

}  // namespace kvn::test
