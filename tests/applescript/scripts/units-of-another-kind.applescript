-- expect error: -1700
-- expect message: Can’t make feet 1.0 into type grams.
(1 as feet) as grams
