-- expect: watered roughly
tell application "Garden" to water without gently
