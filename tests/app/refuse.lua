-- Puts off what is offered, then discards it; then there is nothing left.
studio.answer("cancel")
assert(not studio.recover())
studio.answer("no")
assert(not studio.recover())
assert(#studio.boxes() == 2)
assert(not studio.recover())
assert(#studio.boxes() == 0)
