// The user's running service: it is ended before the tests and started again after them.
#pragma once

#include <string>

namespace kvn::bundle {

class UserService {
public:
    // `program` is any service program: its --quit ends every running service. Throws std::runtime_error if that fails.
    explicit UserService(const std::wstring& program);
    UserService(const UserService&) = delete;
    UserService& operator=(const UserService&) = delete;
    ~UserService();

private:
    std::wstring running;  // the full path of its program; empty: none ran
};

}  // namespace kvn::bundle
