-- expect error: -1700
"" as integer
