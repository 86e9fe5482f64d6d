-- Has a file open until the program is killed.
assert(studio.open(studio.args[1]))
print("open")
io.stdout:flush()
while true do
    studio.wait(100)
end
