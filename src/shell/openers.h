#pragma once

/// Installs the functions of core/navigation.h for the screens that the program has, and the guide for F1.
void installOpeners();
