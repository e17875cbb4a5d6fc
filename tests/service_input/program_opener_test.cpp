#include "service/input/program_opener.h"

#include <gtest/gtest.h>

namespace kvn::test {
namespace {

TEST(ProgramOpenerTest, NoProgramOpensNothing) {
    EXPECT_EQ(service::OpenProgram(service::Program::None), L"nothing");
}

}  // namespace
}  // namespace kvn::test
