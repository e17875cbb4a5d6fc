// Long texts.
#pragma once

#include <string>
#include <string_view>

namespace kvn::model::test {

inline std::string Repeated(std::string_view text, std::size_t times) {
    std::string repeated;
    repeated.reserve(text.size() * times);
    for (std::size_t time = 0; time < times; ++time) repeated += text;
    return repeated;
}

}  // namespace kvn::model::test
