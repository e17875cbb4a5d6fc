// The groups of figures.
#pragma once

namespace kvn::bench {

// Loading and saving a large profile file against TinyXML alone.
void BenchProfileFile();

// Opening the page against opening an empty page made of the same templates. Needs the DLL and the service's folder
// beside this program.
void BenchOpenPage();

}  // namespace kvn::bench
