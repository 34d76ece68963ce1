# A core file: nothing of the program can run.
set width 0
frame function shown::seeShapes
echo ---\n
print shapes.contour
