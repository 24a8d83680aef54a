-- expect error: -1728
-- expect message: Garden got an error: Can’t get bed "Weeds".
tell application "Garden" to get bed "Weeds"
