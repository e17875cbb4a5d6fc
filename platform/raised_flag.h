// A flag that is set during a piece of work, even if the work ends with an exception.
#pragma once

namespace kvn::platform {

class [[nodiscard]] RaisedFlag {
public:
    explicit RaisedFlag(bool& raised) : flag(raised) { raised = true; }
    ~RaisedFlag() { flag = false; }
    RaisedFlag(const RaisedFlag&) = delete;
    RaisedFlag& operator=(const RaisedFlag&) = delete;

private:
    bool& flag;
};

}  // namespace kvn::platform
