#pragma once

#include "datatool/CommandLine.h"

/// The commands that look after a pair of data files. Without a folder they work on the program's own.
/// @return the exit code. @throws RuntimeError when nothing has been changed.
int checkPair(const CommandCall& call);
int repairPair(const CommandCall& call);
int backUpPair(const CommandCall& call);
int restorePair(const CommandCall& call);
