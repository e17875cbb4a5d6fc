// Saves the user's and the machine's settings that the tests may change, and restores them afterwards. A run that was
// cut off leaves it put away; the next run puts it back first.
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

    // Restores everything; returns the list of what could not be restored.
    std::vector<std::string> PutBack();

private:
    bool isAway = true;
};

}  // namespace kvn::bundle
