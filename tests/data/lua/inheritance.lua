-- A hierarchy three deep: BindingLeaf derives from BindingMiddle, which derives from BindingRoot.
local leaf = BindingLeaf(1, 2, 3)
leaf.RootValue = 9
leaf.MiddleValue = 8
return {
    root = leaf.RootValue,
    middle = leaf.MiddleValue,
    leaf = leaf.LeafValue,
    leafWho = leaf:Who(),
    rootWho = BindingRoot():Who(),
    middleWho = BindingMiddle():Who(),
    twice = leaf:Twice(21),
    positionY = leaf.Position.y,
    chained = leaf:Self():Self().LeafValue,
}
