# gnuplot -e "results='FOLDER'" plots.gp: docs/growth.svg, docs/refused.svg and docs/fleet.svg.
set terminal svg size 720,400 background rgb 'white' font 'sans-serif,13'
set key top left
set grid

set output 'docs/fleet.svg'
set xlabel 'devices'
set ylabel 'check, s'
set xrange [0:1050]
set yrange [0:*]
plot results.'/fleet.dat' using 1:2 with linespoints lw 2 pt 7 title 'one thread', \
     results.'/fleet.dat' using 1:3 with linespoints lw 2 pt 5 title 'two threads'

set logscale xy
unset yrange
set output 'docs/refused.svg'
set xlabel 'VRRP interfaces, each refused'
set ylabel 'check, processor time, s'
set xrange [450:4500]
set xtics (500, 1000, 2000, 4000)
plot results.'/refused.dat' using 1:3 with linespoints lw 2 pt 7 title 'all in one identifier', \
     results.'/refused.dat' using 1:6 with linespoints lw 2 pt 5 title 'identifiers by turns'

set output 'docs/growth.svg'
set xlabel 'VRRP instances, one an interface'
set ylabel 'whole check, ms'
set xrange [25:650]
set xtics (32, 64, 128, 255, 510)
plot results.'/growth.dat' using 1:2 with linespoints lw 2 pt 7 title 'plug-in, all rules', \
     results.'/growth.dat' using 1:3 with linespoints lw 2 pt 5 title 'libyang, VR-ID uniqueness alone', \
     results.'/growth.dat' using 1:4 with linespoints lw 2 pt 9 title 'libyang, all that XPath can express'
