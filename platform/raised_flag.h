// A flag that is up for as long as something goes on, however that ends.
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
