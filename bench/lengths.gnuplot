# gnuplot -e "folder='FOLDER'" bench/lengths.gnuplot: draws there what zelvora-bench-lengths has left there.

set encoding utf8
# White, because the page around it may be dark.
set terminal svg size 900,580 font "Helvetica,Arial,sans-serif,14" background "#ffffff"

# How many seconds one write(2) took.
stats folder."/write.dat" nooutput
write = STATS_max
longest = 1e6
# Of fewer rounds than these the quartiles say little.
few = 21

blue = "#0067a5"
orange = "#c44e00"
green = "#00805a"
violet = "#9b4f96"
grey = "#666666"
black = "#333333"

set logscale xyy2
# With room for the names of the curves behind their ends.
set xrange [70:8e7]
least = 0.5
most = 4e6
set yrange [least:most]
set y2range [least * write:most * write]
set xtics ("100" 100, "1,000" 1e3, "10,000" 1e4, "100,000" 1e5, "1,000,000" 1e6)
set ytics ("1" 1, "10" 1e1, "100" 1e2, "1,000" 1e3, "10,000" 1e4, "100,000" 1e5, "1,000,000" 1e6)
set y2tics ("1 µs" 1e-6, "10 µs" 1e-5, "100 µs" 1e-4, "1 ms" 1e-3, "10 ms" 1e-2, "100 ms" 1e-1, "1 s" 1, "10 s" 10)
set tics nomirror scale 0.5,0 textcolor "#333333"
set border 11 linecolor "#888888"
set grid xtics ytics linetype 1 linecolor "#e4e4e4"
set title font ",17" textcolor "#111111"
note = "bars: the middle half of the rounds; hollow: fewer than 21 rounds"
set ylabel "times one write(2) of an event’s bytes" textcolor "#333333"
set y2label "time on the machine that drew this" textcolor "#333333"
unset key

set arrow from graph 0, first 1 to graph 1, first 1 nohead linecolor "#666666" linewidth 1.5
set label "one write(2)" at first longest, first 1 offset 1.2, -0.6 textcolor "#666666"
# What takes longer on the main thread is seen.
frame = 1.0 / 60
set arrow from graph 0, second frame to graph 1, second frame nohead linecolor "#777777" dashtype (4, 4)
set label "one frame at 60 Hz" at graph 0.012, second frame offset 0, 0.5 textcolor "#666666"

# The end of each curve has its label, lifted by so many lines.
draw = "plot for [i=1:|names|] file index names[i] using 1:2 with lines linewidth 2 dashtype dashes[i] linecolor rgb colors[i], \
    for [i=1:|names|] file index names[i] using 1:2:3:4 with yerrorbars linewidth 1.5 pointtype marks[i] pointsize 0.7 linecolor rgb colors[i], \
    for [i=1:|names|] file index names[i] using 1:($5 < few ? $2 : NaN) with points pointtype marks[i] pointsize 0.4 linecolor rgb '#ffffff', \
    for [i=1:|names|] file index names[i] using ($1 < longest ? NaN : $1):2:(labels[i]) with labels left offset 1.2,lift[i] textcolor rgb inks[i]"

set title "Saving one more event"
set xlabel "events in the queue\n{/*0.85 ".note."; dashed: the first event after a pause}" textcolor "#333333"
set output folder."/saving.svg"
file = folder."/saving.dat"
array names = ["this store", "SQLite, a row an event", "one rewritten array", "this store, after a pause", "SQLite, after a pause", \
    "one write(2), after a pause"]
# Two of them lie on one another.
array labels = ["this store", "SQLite, a row an event", "one rewritten array", "", "both, after a pause", "one write(2), after a pause"]
array colors = [blue, orange, green, blue, orange, grey]
array inks = [blue, orange, green, grey, black, grey]
array marks = [7, 5, 9, 7, 5, 11]
array dashes = [1, 1, 1, 2, 2, 2]
array lift = [0.3, 0.15, 0, 0, 0.2, -0.4]
@draw

set xlabel "events in the queue\n{/*0.85 ".note."}" textcolor "#333333"
set title "Opening the store until an upload has its 500 events"
set output folder."/opening.svg"
file = folder."/opening.dat"
array names = ["this store", "SQLite, a row an event", "one rewritten array", "as text, by simdjson", "as text, one read(2)"]
array labels = ["this store", "SQLite, a row an event", "one rewritten array", "as text, by simdjson", "as text, one read(2)"]
array colors = [blue, orange, green, violet, grey]
array inks = [blue, orange, green, violet, grey]
array marks = [7, 5, 9, 13, 11]
array dashes = [1, 1, 1, 1, 1]
# Two of them end near one another, sometimes the one above and sometimes the other.
stats file index names[1] using ($1 < longest ? NaN : $2) nooutput
store = STATS_max
stats file index names[4] using ($1 < longest ? NaN : $2) nooutput
apart = store > STATS_max ? 0.4 : -0.4
array lift = [apart, 0, 0, -apart, -0.5]
@draw
