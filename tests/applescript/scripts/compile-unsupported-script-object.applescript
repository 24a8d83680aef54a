-- expect error: -2741
script s
end script
