# What a user sees of objects in order.
set width 0
set print elements 8
break shown::seeShapes
run
echo ---\n
python
names = """vector pair place radian degree angle8 matrix xform linear rigid rect emptyRect circle ellipse line segment point
noPoint polygon edgelet color inertia emptyContour contour polyline longContour region longRegion emptySet set edgeContour
emptyEdgeContour edgeRegion edgeSet part noHandle handle sameHandle partHandle setHandle badParams emptyContourError
malformed unknownVersion longMessage badPointer contourOfRegion reference pointer pointerToPart noPointer error"""
for name in names.split():
    gdb.execute("output shapes." + name)
    print("   <- " + name)
end
print *shapes.pointer
print *shapes.pointerToPart
print &shapes.region
print shapes.contour.points_[1]
set print elements 0
python
text = gdb.execute("output shapes.longContour", to_string=True)
print("{} pairs, {}".format(text.count("(1, 2)"), text[:60]))
end
