// A product of one program that Windows Installer really installs, and removes again.
#pragma once

#include <string>

#include "tests/profiles/start_menu.h"

namespace kvn::test {

class InstalledProduct {
public:
    // Installs below the given folder, which also holds the package.
    explicit InstalledProduct(const ScratchFolder& folder);
    InstalledProduct(const InstalledProduct&) = delete;
    InstalledProduct& operator=(const InstalledProduct&) = delete;
    ~InstalledProduct();

    const std::wstring& Program() const { return program; }

    // The text that an advertised shortcut to the program stores in place of a path.
    std::wstring AdvertisedTarget() const;

private:
    std::wstring program;
};

}  // namespace kvn::test
