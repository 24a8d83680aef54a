-- expect source: {"5"}
set x to "5" as integer as text as list
x
