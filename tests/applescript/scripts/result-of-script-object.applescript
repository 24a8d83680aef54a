-- expect none
script s
end script
return s
