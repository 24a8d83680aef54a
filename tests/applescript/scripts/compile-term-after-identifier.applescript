-- expect error: -2740
-- expect message: A property can’t go after this identifier.
tell application "Garden" to set x to foo height
