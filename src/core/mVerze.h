#pragma once

#include <QString>

/// The version of this build.
namespace verze {

inline constexpr int major = KALVERA_VERSION_MAJOR;
inline constexpr int minor = KALVERA_VERSION_MINOR;
inline constexpr int revision = KALVERA_VERSION_REVISION;

/// The version as text, such as "1.0.23".
QString text();

}  // namespace verze
