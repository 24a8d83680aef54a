-- expect: 3
repeat with i from 1 to 3
end repeat
return i
