// Pictures of the page and its dialogs, as this machine shows them.
#pragma once

#include <string>
#include <vector>

namespace kvn::bundle {

struct Shot {
    std::string name;
    std::wstring file;  // a PNG file; empty if there is none
    std::string fault;  // why there is none
};

// `programs` is the folder of the programs, `folder` that of the pictures. Starts the service with a sample mouse.
std::vector<Shot> TakePictures(const std::wstring& programs, const std::wstring& folder);

}  // namespace kvn::bundle
