// The service that the user has running: it ends before the tests and is started again after them.
#pragma once

#include <string>

namespace kvn::bundle {

class UserService {
public:
    // `program` is a service's program, whose --quit any running service obeys. Throws std::runtime_error when it does
    // not.
    explicit UserService(const std::wstring& program);
    UserService(const UserService&) = delete;
    UserService& operator=(const UserService&) = delete;
    ~UserService();

private:
    std::wstring running;  // the full path of its program; empty: none ran
};

}  // namespace kvn::bundle
