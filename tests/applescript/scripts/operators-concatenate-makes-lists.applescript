-- expect list
return missing value & "||"
