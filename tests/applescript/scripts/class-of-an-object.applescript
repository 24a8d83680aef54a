-- expect: plant
-- expect events: coregetd
tell application "Garden" to return (class of plant 1 of bed 1) as text
