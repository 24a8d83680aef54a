-- expect: DamaskAlba
tell application "Garden"
	return (name of (plants "Damask" thru "Alba" of bed 1)) as text
end tell
