// Saves the user's and the machine's settings that the tests may change, and restores them afterwards. If a run was
// interrupted, the next run restores them first.
#pragma once

#include <string>
#include <vector>

namespace kvn::bundle {

class SavedUser {
public:
    // Throws std::runtime_error if something cannot be saved; nothing has been changed then.
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
