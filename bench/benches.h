// The groups of figures.
#pragma once

#include "bench/report.h"

namespace kvn::bench {

// Loading and saving a large profile file against TinyXML alone.
void BenchProfileFile(Report& report);

// The DLL's size, and loading it, against a COM DLL that does nothing. Call it before anything else loads the page's
// DLL. Needs both beside this program.
void BenchLoading(Report& report);

// Opening the page, with few profiles and with many, against an empty page made of the same templates. Needs the DLL
// and the service's folder beside this program.
void BenchOpenPage(Report& report);

// Prints how much time of one opening each function that the page calls takes.
void ShowWhereOpeningGoes();

// How often the page calls the registry, allocates memory and gets messages when it opens and applies. Needs the same.
void BenchPageCounts(Report& report);

// A tick of the stroke recogniser against the bare arithmetic, a tick with the service in its own process against the
// time between two ticks, and a long list of gestures against a plain list view.
void BenchGestures(Report& report);

// Gathering the Start menu's programs against the bare shell links of the same files, and how the time grows with their
// number.
void BenchStartMenu(Report& report);

// Opening the profile editor with a hundred profiles and selecting each of them, against plain list views of the same
// rows and icons. Needs the DLL beside this program.
void BenchProfileEditor(Report& report);

// The cost of the service's hook, and of the finished service at rest and in use. Needs the service's folder beside
// this program.
void BenchService(Report& report);

// From the press of a real button to the key in another program's window. Needs the mouse that start_hands of
// own_windows.sh starts.
void BenchPresses(Report& report);

}  // namespace kvn::bench
