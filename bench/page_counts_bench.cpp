#include <tinyxml.h>

#include <windows.h>

#include <optional>
#include <string>

#include "bench/benches.h"
#include "bench/heap_count.h"
#include "bench/import_watch.h"
#include "bench/property_sheet.h"
#include "bench/reference_page.h"
#include "bench/running_service.h"
#include "bench/stored_profiles.h"
#include "resources/resource.h"

namespace kvn::bench {
namespace {

constexpr std::size_t kProfiles = 10;
constexpr wchar_t kWideCopiedFile[] = L"bench-profiles.xml";
constexpr char kCopiedFile[] = "bench-profiles.xml";
constexpr char kReferenceFile[] = "bench-reference.xml";

// Six values of the attached mouse and the machine's default: each is opened, read and closed.
constexpr double kCallsOfReading = 7 * 3;
// One value: the key is opened, the value set, the key closed.
constexpr double kCallsOfOneWrite = 3;

constexpr double kMemoryLimit = 1.25;
constexpr double kMessageLimit = 1.5;

struct Counts {
    double registryCalls = 0;
    double allocations = 0;
    double messages = 0;
};

struct SheetCounts {
    Counts opening;
    Counts idleApply;    // with nothing changed
    Counts changeApply;  // with one slot changed
};

// Counts on this thread from its construction on.
class Counter {
public:
    Counter() : imports(PageModule()) {}

    // The counts since the last call.
    Counts Take() {
        const Counts counts{static_cast<double>(imports.CountOf("Reg")), static_cast<double>(imports.Allocations()),
                            static_cast<double>(MessageCount::Count() - messagesBefore)};
        imports.Restart();
        messagesBefore = MessageCount::Count();
        return counts;
    }

private:
    ImportWatch imports;
    MessageCount messages;
    std::size_t messagesBefore = 0;
};

void ChooseAnotherFunction(HWND sheet) {
    const HWND chooser = GetDlgItem(ButtonPaneOf(sheet), IDC_PANE_BUTTON5);
    const auto chosen = SendMessageW(chooser, CB_GETCURSEL, 0, 0);
    SendMessageW(chooser, CB_SETCURSEL, chosen == 1 ? 2 : 1, 0);
}

SheetCounts CountSheet(PageMaker makePage) {
    std::optional<Counter> counter;
    SheetCounts counts;
    const auto work = [&](HWND sheet) {
        counts.opening = counter->Take();
        Apply(sheet);
        counts.idleApply = counter->Take();
        ChooseAnotherFunction(sheet);
        counter->Take();
        Apply(sheet);
        counts.changeApply = counter->Take();
        counter.reset();
    };
    OpenSheet(makePage, {[&] { counter.emplace(); }, work});
    return counts;
}

// The heap use of TinyXML alone: for parsing the file, and for building and printing the same document again.
struct XmlAllocations {
    double parsing = 0;
    double printing = 0;
};

XmlAllocations CountXml(const std::wstring& file) {
    CopyFileW(file.c_str(), kWideCopiedFile, FALSE);
    XmlAllocations counts;
    const std::size_t atStart = HeapAllocations();
    TiXmlDocument parsed;
    parsed.LoadFile(kCopiedFile, TIXML_ENCODING_LEGACY);
    counts.parsing = static_cast<double>(HeapAllocations() - atStart);
    const std::size_t atCopy = HeapAllocations();
    const TiXmlDocument copy(parsed);
    copy.SaveFile(kReferenceFile);
    counts.printing = static_cast<double>(HeapAllocations() - atCopy);
    DeleteFileW(kWideCopiedFile);
    static_cast<void>(std::remove(kReferenceFile));
    return counts;
}

}  // namespace

void BenchPageCounts(Report& report) {
    const RunningService service;
    if (!service.Runs() || PageModule() == nullptr) {
        return report.AddMissing("what the page calls, without the service or the DLL");
    }
    const StoredProfiles profiles(kProfiles);
    const XmlAllocations xml = CountXml(SampleProfileFile());
    OpenSheet(OurPage);
    const SheetCounts ours = CountSheet(OurPage);
    const SheetCounts bare = CountSheet(BarePage);

    const auto add = [&](const std::string& when, const Counts& of, double registryCalls, double allocations,
                         const std::string& xmlWork, double messages) {
        report.Add({when + ": registry calls", "", of.registryCalls, "what its values need", registryCalls, 1});
        report.Add(
            {when + ": allocations", "", of.allocations, "TinyXML alone, " + xmlWork, allocations, kMemoryLimit});
        report.Add({when + ": messages", "", of.messages, "the same sheet with a bare page", messages, kMessageLimit});
    };
    add("open with 10 profiles", ours.opening, kCallsOfReading, xml.parsing, "parsing", bare.opening.messages);
    add("apply, nothing changed", ours.idleApply, 0, xml.printing, "printing", bare.idleApply.messages);
    add("apply, one slot changed", ours.changeApply, kCallsOfOneWrite, xml.printing, "printing",
        bare.changeApply.messages);
}

}  // namespace kvn::bench
