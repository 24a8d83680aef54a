-- expect error: -1719
-- expect message: Garden got an error: Can’t get plant 9 of bed 1. Invalid index.
tell application "Garden" to get plant 9 of bed 1
