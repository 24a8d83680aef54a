-- expect source: {3, "3", 4, 1.5, "true", "12", {1}, {"a"}, 5, "3.0", {"yes"}, "34", true, true}
{"3" as integer, 3 as text, 3.7 as integer, "1.5" as real, true as text, {1, 2} as text, 1 as list, "a" as list, {5} as integer, 3.0 as text, "yes" as text as list, (3 as text) & 4, 1 as boolean, "true" as boolean}
