# What a user sees of objects that are not in order.
set width 0
set print elements 8
break shown::seeShapes
run
echo ---\n
echo zeros\n
print *(gmContour*)shapes.zeros
print *(gmRegion*)shapes.zeros
print *(gmRegionSet*)shapes.zeros
print *(gmRegionT<gmEdgelet>*)shapes.zeros
print *(gmContourDefs::BadParams*)shapes.zeros
print *(RegionCPtr*)shapes.zeros
print (gmRegion*)shapes.zeros
echo noise\n
print *(gmContour*)shapes.noise
print *(gmRegion*)shapes.noise
print *(gmRegionSet*)shapes.noise
print *(gmRegionT<gmEdgelet>*)shapes.noise
print *(gmRegionSetT<gmEdgelet>*)shapes.noise
print *(gmContourDefs::BadParams*)shapes.noise
print *(gmRect*)shapes.noise
print *(RegionCPtr*)shapes.noise
print *(gmPolygon*)shapes.noise
echo nowhere\n
print (gmContour*)16
print (gmRegion*)16
print (gmVector<2>*)16
echo vectors that were run over\n
set var ((gmContour&)shapes.contour).points_._M_impl._M_start = 16
print shapes.contour
set var ((gmContour&)shapes.polyline).points_._M_impl._M_finish = 0x7fffffffffff0000
set var ((gmContour&)shapes.polyline).points_._M_impl._M_end_of_storage = 0x7fffffffffff0000
print shapes.polyline
set var ((gmRegion&)shapes.region).holes_._M_impl._M_finish = 16
print shapes.region
set var ((gmRegionSet&)shapes.set).regions_._M_impl._M_finish = (char*)shapes.set.regions_._M_impl._M_finish + 1
print shapes.set
set var ((RegionCPtr&)shapes.handle).object_ = 16
print shapes.handle
set var ((gmException*)(void*)&shapes.badParams)->text_._M_dataplus._M_p = 16
print shapes.badParams
echo holes that hold each other\n
set print max-depth 6
print shapes.ringHandle
