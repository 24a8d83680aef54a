-- expect: Garden
-- expect events: coregetd
tell application "Garden" to get name
