-- expect error: -10004
do shell script "echo x" with administrator privileges
