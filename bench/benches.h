// The groups of figures.
#pragma once

namespace kvn::bench {

// Loading and saving a large profile file against TinyXML alone.
void BenchProfileFile();

// Opening the page against opening an empty page made of the same templates. Needs the DLL and the service's folder
// beside this program.
void BenchOpenPage();

// A tick of the stroke recogniser against the bare arithmetic, a tick with the service in its own process against the
// time between two ticks, and a long list of gestures against a plain list view.
void BenchGestures();

// Gathering the Start menu's programs against the bare shell links of the same files, and how the time grows with their
// number.
void BenchStartMenu();

// Opening the profile editor with a hundred profiles and selecting each of them, against plain list views of the same
// rows and icons. Needs the DLL beside this program.
void BenchProfileEditor();

}  // namespace kvn::bench
