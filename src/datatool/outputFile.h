#pragma once

#include <QString>

/// Failures of files that are written.
namespace outputFile {

/// @throws RuntimeError 75 always: `what` in Czech, followed by the path.
[[noreturn]] void fail(const QString& what, const QString& path);

/// @throws RuntimeError 75 when something exists at `path`, even if only a dangling link.
void refuseExisting(const QString& path);

/// The same, also when the folder that `path` is to stand in is missing or the name is too long.
void refuseExistingOrHomeless(const QString& path);

/// @throws RuntimeError 75 always.
[[noreturn]] void failWriting(const QString& path);

}  // namespace outputFile
