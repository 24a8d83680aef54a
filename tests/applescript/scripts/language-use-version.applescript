-- expect source: 4
use AppleScript version "2.4" -- Yosemite or later
use scripting additions
property p : 3
p + 1
