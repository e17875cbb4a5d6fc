#include <tinyxml.h>

#include <cstdio>
#include <string>

#include "bench/benches.h"
#include "bench/stopwatch.h"
#include "model/profile_file.h"

namespace kvn::bench {
namespace {

constexpr int kItems = 100;
constexpr int kRounds = 15;
constexpr double kLimit = 1.5;
constexpr wchar_t kFile[] = L"bench-profiles.xml";
constexpr char kNarrowFile[] = "bench-profiles.xml";
constexpr char kReferenceFile[] = "bench-reference.xml";

model::ProfileSet LargestProfileSet() {
    model::ProfileRecord record = model::DefaultProfileRecord();
    for (int i = 0; i < kItems; ++i) {
        const std::wstring number = std::to_wstring(i);
        record.settings.applications.push_back(
            {L"Program " + number, L"C:\\Program Files\\Maker\\Program" + number + L".exe"});
        record.settings.gestures.push_back({L"URDL", 37, L"Opens the window number " + number, {{162, 16, 65}}});
    }
    model::ProfileSet profiles(kItems, record);
    for (int i = 0; i < kItems; ++i) profiles[static_cast<std::size_t>(i)].name = L"Profile " + std::to_wstring(i);
    return profiles;
}

}  // namespace

void BenchProfileFile(Report& report) {
    const model::ProfileSet profiles = LargestProfileSet();
    static_cast<void>(model::SaveProfileFile(kFile, profiles));
    TiXmlDocument reference;
    reference.LoadFile(kNarrowFile, TIXML_ENCODING_LEGACY);

    report.Compare(
        "load 100 x 100 x 100", "TinyXML alone, parsing the same file", kLimit, kRounds,
        [] {
            return Measure([] {
                model::ProfileSet loaded;
                model::LoadProfileFile(kFile, loaded);
            });
        },
        [&] {
            return Measure([&] {
                TiXmlDocument parsed;
                parsed.LoadFile(kNarrowFile, TIXML_ENCODING_LEGACY);
            });
        });
    report.Compare(
        "save 100 x 100 x 100", "TinyXML alone, printing the same document", kLimit, kRounds,
        [&] { return Measure([&] { static_cast<void>(model::SaveProfileFile(kFile, profiles)); }); },
        [&] { return Measure([&] { reference.SaveFile(kReferenceFile); }); });
    _wremove(kFile);
    static_cast<void>(std::remove(kReferenceFile));
}

}  // namespace kvn::bench
