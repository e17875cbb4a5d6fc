#include "service/engine/page_questions.h"

namespace kvn::service {
namespace {

constexpr std::uint32_t kKeptAfterQuestion = 500;
// An event that waited in Windows' queue can be a little older than the question that was heard before it.
constexpr std::uint32_t kQueueDelay = 500;

bool IsRecent(std::uint32_t asked, std::uint32_t time) {
    return time - asked + kQueueDelay < kKeptAfterQuestion + kQueueDelay;
}

}  // namespace

void PageQuestions::Ask(std::size_t physicalButton, std::uint32_t time) {
    if (physicalButton < questions.size()) questions[physicalButton] = {true, time};
}

void PageQuestions::Expire(std::uint32_t time) {
    for (Question& question : questions) question.isOpen = question.isOpen && IsRecent(question.time, time);
}

}  // namespace kvn::service
