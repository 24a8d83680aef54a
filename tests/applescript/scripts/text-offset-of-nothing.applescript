-- expect: 0 3
return ((offset of "x" in "abc") as text) & " " & (offset of "c" in "abc")
