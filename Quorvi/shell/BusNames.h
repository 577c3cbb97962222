#pragma once

// The program's names on the session bus. The bus name is also that of its desktop entry.
namespace quorvi::bus {

inline constexpr auto name = "app.quorvi.Quorvi";
inline constexpr auto path = "/app/quorvi/Quorvi";
inline constexpr auto interface = "app.quorvi.Quorvi";
// The interface through which launchers activate a running program.
inline constexpr auto activation = "org.freedesktop.Application";

}  // namespace quorvi::bus
