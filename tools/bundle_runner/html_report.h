// The report: one HTML file that holds everything, pictures too.
#pragma once

#include <string>
#include <vector>

#include "tools/bundle_runner/installer_trial.h"
#include "tools/bundle_runner/machine_facts.h"
#include "tools/bundle_runner/page_pictures.h"
#include "tools/bundle_runner/program_run.h"
#include "tools/bundle_runner/test_output.h"

namespace kvn::bundle {

struct ProgramReport {
    std::string name;
    ProgramRun run;
    std::vector<TestResult> tests;
};

struct Report {
    std::string version;  // of the product
    std::vector<Fact> facts;
    std::vector<std::string> leftOut;  // tests that the bundle lacks, and why
    std::vector<std::string> faults;   // of the run itself
    std::vector<Step> installer;
    std::vector<ProgramReport> programs;
    std::vector<Shot> pictures;
};

struct Counts {
    int passed = 0;
    int failed = 0;
    int skipped = 0;
};

// A program that failed although none of its tests did counts as one failure.
Counts CountTests(const ProgramReport& program);
// Counts all programs, and the installer's steps.
Counts CountAll(const Report& report);
// "12 passed, 1 failed, 2 skipped"
std::string Sentence(const Counts& counts);

std::string ToHtml(const Report& report);

}  // namespace kvn::bundle
