// Files as large as are read, and larger: what loading them takes. Each test prints its row of a table: time and the
// most heap at one moment.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "model/xml_guard.h"
#include "tests/model_windows/heap_watch.h"
#include "tests/model_windows/profile_file_failure_fixture.h"
#include "tests/model_windows/small_stack.h"

namespace kvn::model {
namespace {

class LargeFileTest : public ProfileFileFailureTest {
protected:
    // Loads a file of these bytes with little stack, once to watch the heap and once to take the time.
    void ExpectLoaded(const std::string& bytes, std::size_t profiles, std::size_t mostHeapBytes) const {
        test::WriteBytes(Path(), bytes);
        std::ptrdiff_t peak = 0;
        {
            const test::HeapWatch heap;
            ASSERT_TRUE(heap.IsInPlace());
            EXPECT_EQ(LoadWithLittleStack(), profiles);
            peak = heap.PeakBytes();
        }
        EXPECT_LE(peak, static_cast<std::ptrdiff_t>(mostHeapBytes));

        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(LoadWithLittleStack(), profiles);
        const auto taken = std::chrono::steady_clock::now() - begin;
        std::printf("    %.1f MiB: %lld ms, %.1f MB of heap\n",
                    static_cast<double>(bytes.size()) / static_cast<double>(test::kMegabyte),
                    static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(taken).count()),
                    static_cast<double>(peak) / 1e6);
        EXPECT_EQ(test::ReadBytes(Path()).size(), bytes.size());
    }

private:
    std::size_t LoadWithLittleStack() const {
        std::size_t loaded = 0;
        ProfileSet list;
        test::RunWithStackOf(test::kSmallStack, [&] { loaded = LoadProfileFile(Path(), list); });
        return loaded;
    }
};

// As many programs and as long paths as fit into the limits of bytes and of elements.
std::string LargestGoodFile() {
    constexpr std::size_t kProfiles = 1650;
    constexpr std::size_t kPrograms = 100;
    constexpr std::size_t kElements = kProfiles * (2 + kPrograms * 3);
    static_assert(kElements < kMaxXmlElements);
    const std::string program = "<Application><name>n</name><path>" + std::string(146, 'p') + "</path></Application>";
    std::string bytes = "<data>";
    bytes.reserve(kMaxXmlBytes);
    for (std::size_t profile = 0; profile < kProfiles; ++profile) {
        bytes += "<profile><profname>n</profname>";
        for (std::size_t number = 0; number < kPrograms; ++number) bytes += program;
        bytes += "</profile>";
    }
    bytes += "</data>";
    EXPECT_GT(bytes.size(), kMaxXmlBytes - test::kMegabyte);
    bytes.resize(kMaxXmlBytes, ' ');
    return bytes;
}

TEST_F(LargeFileTest, OfFiftyMegabytesTakesNothing) {
    ExpectLoaded("<data><profile/>" + std::string(50 * test::kMegabyte, ' ') + "</data>", 0, test::kMegabyte / 16);
}

TEST_F(LargeFileTest, OfZerosTakesItsOwnBytes) {
    ExpectLoaded(std::string(kMaxXmlBytes, '\0'), 0, kMaxXmlBytes + test::kMegabyte);
}

TEST_F(LargeFileTest, OfTagsWithoutEndsTakesItsOwnBytes) {
    ExpectLoaded(std::string(31 * test::kMegabyte, '<'), 0, kMaxXmlBytes + test::kMegabyte);
}

TEST_F(LargeFileTest, OfManyTagsInsideOfEachOtherTakesItsOwnBytes) {
    std::string bytes;
    while (bytes.size() < 300'000) bytes += "<a>";
    ExpectLoaded(bytes, 0, test::kMegabyte);
}

TEST_F(LargeFileTest, ThatIsGoodIsLoadedWhole) {
    const std::string bytes = LargestGoodFile();
    ASSERT_NE(bytes.find("</data>"), std::string::npos);
    ExpectLoaded(bytes, 1650, 300 * test::kMegabyte);
}

TEST_F(LargeFileTest, ThatIsCutOffIsRefusedWhole) {
    const std::string bytes = LargestGoodFile();
    ExpectLoaded(bytes.substr(0, bytes.rfind("</profile>")), 0, 250 * test::kMegabyte);
}

TEST_F(LargeFileTest, OfAsManyElementsAsAreAllowedIsLoaded) {
    std::string bytes = "<data><profile/>";
    bytes.reserve(test::kMegabyte * 4);
    for (std::size_t element = 2; element < kMaxXmlElements; ++element) bytes += "<a/>";
    ExpectLoaded(bytes + "</data>", 1, 128 * test::kMegabyte);
}

}  // namespace
}  // namespace kvn::model
