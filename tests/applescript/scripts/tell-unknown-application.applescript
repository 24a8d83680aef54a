-- expect error: -1728
-- expect message: Can’t get application "Nowhere".
-- expect events: 
tell application "Nowhere" to get name
