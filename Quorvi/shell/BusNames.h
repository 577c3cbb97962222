#pragma once

// How the running program is found on the session bus. The bus name is also that of its entry in
// the desktop's launcher.
namespace quorvi::bus {

inline constexpr auto name = "app.quorvi.Quorvi";
inline constexpr auto path = "/app/quorvi/Quorvi";
inline constexpr auto interface = "app.quorvi.Quorvi";
// By which a launcher brings a program up that may be running already.
inline constexpr auto activation = "org.freedesktop.Application";

}  // namespace quorvi::bus
