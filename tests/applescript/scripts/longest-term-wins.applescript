-- expect: msng
-- expect events: coregetd
tell application "Garden" to return height per week of plant 1 of bed 1
