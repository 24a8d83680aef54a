#pragma once

/// How the control tool speaks to the simulator, on the session bus under the simulator's own name:
///
///     method Get(key s) -> (value ay)
///     method Set(key s, value ay)          returns when the model has changed and the window shows it
///     method Dump() -> (json s)
///     method Reset()
///     method Quit()
///     signal Changed(key s, value ay)      after each change of a key's value
///
/// Values are bytes: a text that a person wants to see in a reply need not be UTF-8. What is refused, and an unknown
/// key, is the error `kRefused` with the reason as its message.
namespace morla::captureone {

inline constexpr char kBusName[] = "com.captureone.captureone16";
inline constexpr char kControlPath[] = "/control";
inline constexpr char kControlInterface[] = "app.morla.CaptureOneControl1";
inline constexpr char kRefused[] = "app.morla.CaptureOneControl1.Error.Refused";

}  // namespace morla::captureone
