-- expect: script
script s
end script
return (class of s) as text
