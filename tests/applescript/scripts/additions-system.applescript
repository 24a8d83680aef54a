-- expect source: {"me", "", "me", "KEY", record, missing value, {"AppleScript"}}
{system attribute "USER", system attribute "NONE", short user name of (system info), localized string "KEY", class of (get volume settings), output volume of (get volume settings), scripting components}
