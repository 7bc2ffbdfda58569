# gnuplot -e "data='growth.dat'; plot_file='growth.svg'" growth.gp
set terminal svg size 720,480 background rgb 'white' font 'sans-serif,13'
set output plot_file
set logscale xy
set xlabel 'VRRP instances, one an interface'
set ylabel 'whole check, ms'
set xrange [25:650]
set xtics (32, 64, 128, 255, 510)
set key top left
set grid
plot data using 1:2 with linespoints lw 2 pt 7 title 'plug-in, all twelve rules', \
     data using 1:3 with linespoints lw 2 pt 5 title 'libyang, VR-ID uniqueness alone', \
     data using 1:4 with linespoints lw 2 pt 9 title 'libyang, all that XPath can express'
