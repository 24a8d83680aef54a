-- expect: msng
missing value
