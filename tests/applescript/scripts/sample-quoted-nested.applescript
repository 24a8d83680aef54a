-- expect source: "grep -c 'it'\\''s \"x\"' '/a b/c'"
set cmd to "grep -c " & quoted form of "it's \"x\"" & " " & (quoted form of POSIX path of "Macintosh HD:a b:c")
cmd
