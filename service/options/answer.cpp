#include "service/options/answer.h"

#include "service/resources/service_texts.h"

namespace kvn::service {

Answer Fault(unsigned textId, const std::wstring& first, const std::wstring& second) {
    return {kFailed, Text(textId, first, second) + L'\n'};
}

}  // namespace kvn::service
