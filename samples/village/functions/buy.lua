local goods, purse = control("lstGoods"), control("txtCoins")
local names = goods.items
local line = names[goods.selected + 1]
if not line then return call("say", "Choose something first.") end
local name, price = line:match("^(.-)%s+(%d+)$")
local coins = tonumber(purse.text:match("%d+"))
if tonumber(price) > coins then return call("say", "That costs more than you have.") end
table.remove(names, goods.selected + 1)
goods.items = names
goods.selected = math.min(goods.selected, #names - 1)
purse.text = (coins - tonumber(price)) .. " coins"
call("say", "You buy: " .. name:lower() .. ".")
