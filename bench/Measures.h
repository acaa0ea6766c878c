#pragma once

class Figures;
class Stand;

/// @name What is measured, a file for each
/// @{
void MeasureTransactions(Stand &stand, Figures &figures);
void MeasureProcessorTime(Stand &stand, Figures &figures);
void MeasureSearch(Stand &stand, Figures &figures);
void MeasureResponsiveness(Stand &stand, Figures &figures);
void MeasureTree(Stand &stand, Figures &figures);
void MeasureTerminal(Stand &stand, Figures &figures);
void MeasureTerminalAtLength(Stand &stand, Figures &figures);
void MeasureScope(Stand &stand, Figures &figures);
void MeasureScopeForTenMinutes(Stand &stand, Figures &figures);
void MeasureLogger(Stand &stand, Figures &figures);
void MeasureFirmware(Stand &stand, Figures &figures);
void MeasureStart(Figures &figures);
/// @}

/// Part of `MeasureStart` that runs as a process of its own before the screen: starts the program and prints
/// the milliseconds until its window is painted, and its resident memory in KiB.
int WatchStart(int argc, char *argv[]);
