-- expect: Gallica
-- expect events: coregetd
tell application "Garden" to return name of last plant of bed 1 whose ripe
