// What the tests may change of the user's and the machine's is put away before them and put back after them. A run that
// was cut off leaves it put away; the next run puts it back first.
#pragma once

#include <string>
#include <vector>

namespace kvn::bundle {

class SavedUser {
public:
    // Throws std::runtime_error when something cannot be put away; nothing has been changed then.
    SavedUser();
    SavedUser(const SavedUser&) = delete;
    SavedUser& operator=(const SavedUser&) = delete;
    ~SavedUser();

    // Puts everything back; returns what could not be.
    std::vector<std::string> PutBack();

private:
    bool isAway = true;
};

}  // namespace kvn::bundle
