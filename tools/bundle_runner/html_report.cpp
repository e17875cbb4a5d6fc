#include "tools/bundle_runner/html_report.h"

#include <algorithm>
#include <array>

#include "tools/bundle_runner/report_text.h"

namespace kvn::bundle {
namespace {

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>Tests of the mouse settings</title><style>
body { font: 14px/1.4 sans-serif; margin: 2em; max-width: 75em }
table { border-collapse: collapse } td, th { border: 1px solid #bbb; padding: .2em .6em; text-align: left }
pre { background: #f4f4f4; padding: .6em; overflow-x: auto; white-space: pre-wrap } img { border: 1px solid #bbb }
.failed { background: #fbd5d5 } .skipped { background: #fdf3cf }
</style></head><body>
)";

constexpr std::array kOutcomeNames{"passed", "failed", "skipped"};
constexpr std::array kStepNames{"passed", "failed", "skipped"};

void Add(Counts& counts, Outcome outcome) {
    ++(outcome == Outcome::Passed ? counts.passed : outcome == Outcome::Failed ? counts.failed : counts.skipped);
}

Counts& operator+=(Counts& sum, const Counts& more) {
    sum.passed += more.passed;
    sum.failed += more.failed;
    sum.skipped += more.skipped;
    return sum;
}

std::string Element(const std::string& name, const std::string& inner) {
    return "<" + name + ">" + inner + "</" + name + ">";
}

std::string Row(const std::vector<std::string>& cells, const std::string& kind = {}) {
    std::string html = "<tr class=\"" + kind + "\">";
    for (const std::string& cell : cells) html += Element("td", ToHtml(cell));
    return html + "</tr>\n";
}

std::string Folded(const std::string& title, const std::string& printed) {
    return "<details><summary>" + ToHtml(title) + "</summary><pre>" + ToHtml(printed) + "</pre></details>\n";
}

std::string Facts(const Report& report) {
    std::string rows = Row({"Version of the programs", report.version});
    for (const auto& [name, value] : report.facts) rows += Row({name, value});
    return Element("table", rows);
}

std::string List(const std::string& title, const std::vector<std::string>& lines) {
    if (lines.empty()) return {};
    std::string items;
    for (const std::string& line : lines) items += Element("li", ToHtml(line));
    return Element("h2", title) + Element("ul", items);
}

std::string Ending(const ProgramRun& run) {
    if (!run.hasStarted) return "did not start";
    if (run.hasTimedOut) return "was ended because it took too long";
    return "ended with " + std::to_string(run.exitCode);
}

std::string ProgramRow(const ProgramReport& program) {
    const Counts counts = CountTests(program);
    return Row(
        {program.name, std::to_string(counts.passed), std::to_string(counts.failed), std::to_string(counts.skipped),
         std::to_string(program.run.duration.count() / 1000) + " s", Ending(program.run)},
        counts.failed > 0 ? "failed" : "");
}

std::string Programs(const Report& report) {
    std::string rows =
        "<tr><th>program</th><th>passed</th><th>failed</th><th>skipped</th><th>time</th><th>end</th></tr>\n";
    for (const ProgramReport& program : report.programs) rows += ProgramRow(program);
    return Element("h2", "Programs") + Element("table", rows);
}

std::string TestsThat(const Report& report, Outcome outcome, const std::string& title) {
    std::string html;
    for (const ProgramReport& program : report.programs) {
        for (const TestResult& test : program.tests) {
            if (test.outcome != outcome) continue;
            html += Element("h3", ToHtml(program.name + ": " + test.name)) + Element("pre", ToHtml(test.printed));
        }
    }
    return html.empty() ? html : Element("h2", title) + html;
}

std::string EveryTest(const Report& report) {
    std::string rows;
    for (const ProgramReport& program : report.programs) {
        for (const TestResult& test : program.tests) {
            const char* const outcome = kOutcomeNames[static_cast<std::size_t>(test.outcome)];
            rows += Row({program.name, test.name, outcome}, outcome);
        }
    }
    return "<details><summary>Every test</summary><table>" + rows + "</table></details>\n";
}

std::string Installer(const Report& report) {
    std::string rows;
    for (const Step& step : report.installer) {
        const char* const outcome = kStepNames[static_cast<std::size_t>(step.outcome)];
        rows += Row({step.what, outcome, step.reason}, outcome);
    }
    return Element("h2", "Installer") + Element("table", rows);
}

std::string Picture(const Shot& shot) {
    const std::string title = Element("h3", ToHtml(shot.name));
    if (shot.file.empty()) return title + Element("p", "There is no picture: " + ToHtml(shot.fault));
    return title + "<img alt=\"" + ToHtml(shot.name) + "\" src=\"data:image/png;base64," +
           ToBase64(ReadBytes(shot.file)) + "\">\n";
}

std::string Pictures(const Report& report) {
    std::string html = Element("h2", "Pictures");
    for (const Shot& shot : report.pictures) html += Picture(shot);
    return html;
}

std::string Outputs(const Report& report) {
    std::string html = Element("h2", "What the programs printed");
    for (const ProgramReport& program : report.programs) html += Folded(program.name, program.run.output);
    return html;
}

}  // namespace

Counts CountTests(const ProgramReport& program) {
    Counts counts;
    for (const TestResult& test : program.tests) Add(counts, test.outcome);
    const bool hasEndedWell = program.run.hasStarted && !program.run.hasTimedOut && program.run.exitCode == 0;
    if (!hasEndedWell && counts.failed == 0) ++counts.failed;
    return counts;
}

Counts CountAll(const Report& report) {
    Counts all;
    for (const ProgramReport& program : report.programs) all += CountTests(program);
    for (const Step& step : report.installer) Add(all, static_cast<Outcome>(step.outcome));
    for (const Shot& shot : report.pictures) {
        if (shot.file.empty()) ++all.failed;
    }
    all.failed += static_cast<int>(report.faults.size());
    return all;
}

std::string Sentence(const Counts& counts) {
    return std::to_string(counts.passed) + " passed, " + std::to_string(counts.failed) + " failed, " +
           std::to_string(counts.skipped) + " skipped";
}

std::string ToHtml(const Report& report) {
    return std::string(kHead) + Element("h1", "Tests of the mouse settings: " + Sentence(CountAll(report))) +
           Facts(report) + List("Faults of this run", report.faults) + Programs(report) +
           List("Not in this bundle", report.leftOut) + Installer(report) +
           TestsThat(report, Outcome::Failed, "Tests that failed") +
           TestsThat(report, Outcome::Skipped, "Tests that were skipped") + Pictures(report) + EveryTest(report) +
           Outputs(report) + "</body></html>\n";
}

}  // namespace kvn::bundle
