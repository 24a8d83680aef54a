-- expect: 2
use AppleScript version "2.4" -- Yosemite (10.10) or later
use scripting additions
return 1 + 1
