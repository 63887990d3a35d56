#pragma once

#include <QtCore/QString>

/// Where a program in `programFolder` keeps its stores: beside itself; but in the user's data folder, made
/// when it is missing, when it was installed (its desktop entry stands in `../share/applications`: whoever
/// runs it then has a store of his own, the administrator too) or when no file can be made in its folder.
QString folderOfStores(const QString &programFolder);

/// Fills `engine.appPath`, `engine.exeName` and `engine.keyFile`: folderOfStores() of the executable; the
/// executable's base name; `quvana.ini` in the user's configuration folder. A place that setProgramPlace()
/// has set comes first.
void locateProgram();

/// Puts the program somewhere else from the next locateProgram() on; for tests and the walk-through. Empty
/// texts bring the real place back.
void setProgramPlace(const QString &folder, const QString &exeName, const QString &keyFile);

/// True when the mark of a first run can be opened for writing. `keyPath` is the key's path,
/// "Software\Lomvex\quvana".
bool KeyExists(const QString &keyPath);
/// Makes the key and writes the value `dbpath` = `engine.storeFilePath`. A failure is not reported.
void CreateProgramKey(const QString &keyPath);

/// The name of the operating system's logged-in user; empty when it gives none.
QString operatingSystemUser();
