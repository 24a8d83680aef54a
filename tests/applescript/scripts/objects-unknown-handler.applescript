-- expect error: -1708
-- expect message: «script box» doesn’t understand the “open_” message.
script box
end script
box's open_()
