-- expect source: true
ignoring punctuation
	"it's" = "its"
end ignoring
