-- expect source: {"n=5", "l=12", {5, "x"}, {1, 2}, {1, 2}, "atrue", "d1.5", {{a:1}}, {a:1, b:2}, "xmissing value"}
{"n=" & 5, "l=" & {1, 2}, 5 & "x", {1} & 2, {1} & {2}, "a" & true, "d" & 1.5, {} & {a:1}, {a:1} & {b:2}, "x" & missing value}
