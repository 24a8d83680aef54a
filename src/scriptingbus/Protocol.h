#pragma once

#include <cstddef>

/// The words of the scripting protocol on the session bus. A scriptable application owns the bus name that equals its
/// bundle identifier and offers there:
///
///     method Dictionary() -> s                     its terms, as applescript::Dictionary describes the table
///     method Send(class s, id s, direct v, params a{sv}, timeoutMs u, considerations u)
///                -> (ok b, value v, number i, message ay, offender v)
///     property Name s, Version s
///
/// An application's own errors are ordinary replies (ok false); an error of D-Bus means that the message did not get
/// through.
namespace morla::scriptingbus {

inline constexpr char kScriptingPath[] = "/scripting";
inline constexpr char kScriptingInterface[] = "app.morla.Scripting1";

inline constexpr char kSendArguments[] = "ssva{sv}uu";
inline constexpr char kSendResult[] = "bviayv";

/// How deeply the containers of one message may be nested, the bus's own variants, arrays and structures all counted:
/// a bus daemon throws out the sender of a deeper message, so it must never be sent.
inline constexpr std::size_t kMaximumDepth = 64;

/// The most that the values of one message may take up, in bytes.
inline constexpr std::size_t kMaximumBytes = std::size_t{64} * 1024 * 1024;

}  // namespace morla::scriptingbus
