<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Dialect</name>
    <message>
        <source>an overlay delivers nothing</source>
        <translation>ein Overlay liefert nichts</translation>
    </message>
    <message>
        <source>an overlay is refused</source>
        <translation>ein Overlay wird abgelehnt</translation>
    </message>
    <message>
        <source>shape 1 takes row 2&apos;s attributes</source>
        <translation>Shape 1 bekommt die Attribute von Zeile 2</translation>
    </message>
    <message>
        <source>each shape has its own row&apos;s attributes</source>
        <translation>jedes Shape hat die Attribute seiner eigenen Zeile</translation>
    </message>
    <message>
        <source>%1 element is not read (%2)</source>
        <translation>%1 Element wird nicht gelesen (%2)</translation>
    </message>
    <message>
        <source>%1 elements are not read (%2)</source>
        <translation>%1 Elemente werden nicht gelesen (%2)</translation>
    </message>
    <message>
        <source>%1 element at 0, 0 is left out</source>
        <translation>%1 Element bei 0, 0 fällt weg</translation>
    </message>
    <message>
        <source>%1 elements at 0, 0 are left out</source>
        <translation>%1 Elemente bei 0, 0 fallen weg</translation>
    </message>
    <message>
        <source>the points beside the drawing are not read</source>
        <translation>die Punkte neben der Zeichnung werden nicht gelesen</translation>
    </message>
    <message>
        <source>the points beside the drawing are read</source>
        <translation>die Punkte neben der Zeichnung werden gelesen</translation>
    </message>
    <message>
        <source>%1 area becomes a line</source>
        <translation>%1 Fläche wird zur Linie</translation>
    </message>
    <message>
        <source>%1 areas become lines</source>
        <translation>%1 Flächen werden zu Linien</translation>
    </message>
    <message>
        <source>%1 shape of several parts is taken apart</source>
        <translation>%1 Shape aus mehreren Teilen wird zerlegt</translation>
    </message>
    <message>
        <source>%1 shapes of several parts are taken apart</source>
        <translation>%1 Shapes aus mehreren Teilen werden zerlegt</translation>
    </message>
    <message>
        <source>%1 block comes as a point</source>
        <translation>%1 Block kommt als Punkt</translation>
    </message>
    <message>
        <source>%1 blocks come as points</source>
        <translation>%1 Blöcke kommen als Punkte</translation>
    </message>
    <message>
        <source>blocks come as what they draw</source>
        <translation>Blöcke kommen als das, was sie zeichnen</translation>
    </message>
    <message>
        <source>%1 arc is not written</source>
        <translation>%1 Bogen wird nicht geschrieben</translation>
    </message>
    <message>
        <source>%1 arcs are not written</source>
        <translation>%1 Bögen werden nicht geschrieben</translation>
    </message>
    <message>
        <source>%1 arc stays an arc</source>
        <translation>%1 Bogen bleibt ein Bogen</translation>
    </message>
    <message>
        <source>%1 arcs stay arcs</source>
        <translation>%1 Bögen bleiben Bögen</translation>
    </message>
    <message>
        <source>other programs miss %1 closed chain</source>
        <translation>anderen Programmen fehlt %1 geschlossener Linienzug</translation>
    </message>
    <message>
        <source>other programs miss %1 closed chains</source>
        <translation>anderen Programmen fehlen %1 geschlossene Linienzüge</translation>
    </message>
    <message>
        <source>%1 closed chain stays closed</source>
        <translation>%1 geschlossener Linienzug bleibt geschlossen</translation>
    </message>
    <message>
        <source>%1 closed chains stay closed</source>
        <translation>%1 geschlossene Linienzüge bleiben geschlossen</translation>
    </message>
    <message>
        <source>other programs do not read the output&apos;s attribute table</source>
        <translation>andere Programme lesen die Attributtabelle der Ausgabe nicht</translation>
    </message>
    <message>
        <source>other programs read the output&apos;s attribute table</source>
        <translation>andere Programme lesen die Attributtabelle der Ausgabe</translation>
    </message>
    <message>
        <source>attributes beyond layer and text stay behind</source>
        <translation>Attribute außer Layer und Text bleiben zurück</translation>
    </message>
    <message>
        <source>all attributes go along</source>
        <translation>alle Attribute gehen mit</translation>
    </message>
    <message>
        <source>%1 element loses its height</source>
        <translation>%1 Element verliert seine Höhe</translation>
    </message>
    <message>
        <source>%1 elements lose their heights</source>
        <translation>%1 Elemente verlieren ihre Höhen</translation>
    </message>
    <message>
        <source>%1 element keeps its height</source>
        <translation>%1 Element behält seine Höhe</translation>
    </message>
    <message>
        <source>%1 elements keep their heights</source>
        <translation>%1 Elemente behalten ihre Höhen</translation>
    </message>
    <message>
        <source>%1 closed chain becomes a line</source>
        <translation>%1 geschlossener Linienzug wird zur Linie</translation>
    </message>
    <message>
        <source>%1 closed chains become lines</source>
        <translation>%1 geschlossene Linienzüge werden zu Linien</translation>
    </message>
    <message>
        <source>%1 circle or arc is drawn in steps of 10 degrees</source>
        <translation>%1 Kreis oder Bogen wird in Schritten von 10 Grad gezeichnet</translation>
    </message>
    <message>
        <source>%1 circles and arcs are drawn in steps of 10 degrees</source>
        <translation>%1 Kreise und Bögen werden in Schritten von 10 Grad gezeichnet</translation>
    </message>
    <message>
        <source>%1 circle or arc is drawn finely</source>
        <translation>%1 Kreis oder Bogen wird fein gezeichnet</translation>
    </message>
    <message>
        <source>%1 circles and arcs are drawn finely</source>
        <translation>%1 Kreise und Bögen werden fein gezeichnet</translation>
    </message>
    <message>
        <source>other programs misplace %1 text</source>
        <translation>andere Programme setzen %1 Text an die falsche Stelle</translation>
    </message>
    <message>
        <source>other programs misplace %1 texts</source>
        <translation>andere Programme setzen %1 Texte an die falsche Stelle</translation>
    </message>
    <message>
        <source>other programs may miss the vertices of chains</source>
        <translation>anderen Programmen fehlen womöglich die Stützpunkte von Linienzügen</translation>
    </message>
    <message>
        <source>numbers too long for their columns are cut</source>
        <translation>Zahlen, die zu lang für ihre Spalten sind, werden abgeschnitten</translation>
    </message>
    <message>
        <source>numbers too long for their columns are rounded</source>
        <translation>Zahlen, die zu lang für ihre Spalten sind, werden gerundet</translation>
    </message>
</context>
<context>
    <name>Launcher</name>
    <message>
        <source>%1 could not be opened: no program of the desktop took it.</source>
        <translation>%1 konnte nicht geöffnet werden: Kein Programm des Desktops hat es angenommen.</translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>You must specify a valid input file</source>
        <translation>Sie müssen eine gültige Eingabedatei angeben</translation>
    </message>
    <message>
        <source>You must select an output file</source>
        <translation>Sie müssen eine Ausgabedatei wählen</translation>
    </message>
    <message>
        <source>Input and Output files can not be the same</source>
        <translation>Ein- und Ausgabedatei können nicht dieselbe sein</translation>
    </message>
    <message>
        <source>This file appears to come from a UNIX<byte value="xd"/>
based system. It does not have both the<byte value="xd"/>
carriage return and line feed caracters <byte value="xd"/>
required for proper interpretation. Choose<byte value="xd"/>
From the menu below what you want to do. <byte value="xd"/>
<byte value="xd"/>
Yes    : Overwrite the original with the fixed version <byte value="xd"/>
No     : Create a fixed version in a new location<byte value="xd"/>
Cancel : Abort the conversion<byte value="xd"/>
</source>
        <translation>Diese Datei stammt anscheinend von einem
UNIX-System. Ihre Zeilen enden nicht mit
Wagenrücklauf und Zeilenvorschub, wie es
zum richtigen Lesen nötig ist. Wählen Sie
unten, was geschehen soll.

Ja:   Das Original mit der berichtigten Fassung überschreiben
Nein:   Eine berichtigte Fassung an einem anderen Ort anlegen
Abbrechen:   Die Umwandlung abbrechen
</translation>
    </message>
    <message>
        <source>Problem with Input</source>
        <translation>Problem mit der Eingabe</translation>
    </message>
    <message>
        <source>Select a Name for the new Version</source>
        <translation>Name für die neue Fassung</translation>
    </message>
    <message>
        <source>Error Finding %1</source>
        <translation>%1 nicht gefunden</translation>
    </message>
    <message>
        <source>Could Not locate %1<byte value="xd"/>
<byte value="xd"/>
Please type it&apos;s location in the box below</source>
        <translation>%1 wurde nicht gefunden.

Bitte geben Sie unten an, wo die Datei liegt</translation>
    </message>
    <message>
        <source>Fatal Error: Could not find file %1</source>
        <translation>Schwerer Fehler: Die Datei %1 wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Warning: <byte value="xd"/>
Could not find file %1</source>
        <translation>Warnung:
Die Datei %1 wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Unhandled Data Type %1</source>
        <translation>Nicht unterstützte Datenart %1</translation>
    </message>
</context>
<context>
    <name>OptionNaming</name>
    <message>
        <source>Height in the dialog &quot;DBF Fields&quot;</source>
        <translation>Höhe im Fenster „DBF-Felder“</translation>
    </message>
    <message>
        <source>Dialect: Standard</source>
        <translation>Dialekt: Standard</translation>
    </message>
    <message>
        <source>Dialect: Classic</source>
        <translation>Dialekt: Classic</translation>
    </message>
    <message>
        <source>a setting of the command line</source>
        <translation>eine Einstellung der Befehlszeile</translation>
    </message>
    <message>
        <source>&quot;%1&quot; under More</source>
        <translation>„%1“ unter Mehr</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>Encoding of texts</source>
        <translation>Zeichensatz der Texte</translation>
    </message>
    <message>
        <source>Where the input names none, or a wrong one</source>
        <translation>Wo die Eingabe keinen oder einen falschen nennt</translation>
    </message>
    <message>
        <source>as in UTF-8, 1252, GBK</source>
        <translation>wie UTF-8, 1252, GBK</translation>
    </message>
    <message>
        <source>Read paper space too</source>
        <translation>Auch den Papierbereich lesen</translation>
    </message>
    <message>
        <source>What the drawing has on its layout sheets</source>
        <translation>Was die Zeichnung auf ihren Layoutblättern hat</translation>
    </message>
    <message>
        <source>Blocks</source>
        <translation>Blöcke</translation>
    </message>
    <message>
        <source>How blocks come that the drawing inserts</source>
        <translation>Wie Blöcke kommen, die die Zeichnung einfügt</translation>
    </message>
    <message>
        <source>As points at their places</source>
        <translation>Als Punkte an ihren Stellen</translation>
    </message>
    <message>
        <source>As what they draw</source>
        <translation>Als das, was sie zeichnen</translation>
    </message>
    <message>
        <source>Both</source>
        <translation>Beides</translation>
    </message>
    <message>
        <source>Most elements from blocks</source>
        <translation>Meiste Elemente aus Blöcken</translation>
    </message>
    <message>
        <source>The run ends there, with what was written</source>
        <translation>Die Umwandlung endet dort mit dem, was geschrieben wurde</translation>
    </message>
    <message>
        <source>usually 100000000</source>
        <translation>üblich 100000000</translation>
    </message>
    <message>
        <source>List of entity types</source>
        <translation>Liste der Objektarten</translation>
    </message>
    <message>
        <source>Where $CDF.MAP lies</source>
        <translation>Wo $CDF.MAP liegt</translation>
    </message>
    <message>
        <source>where it was found last</source>
        <translation>wo sie zuletzt gefunden wurde</translation>
    </message>
    <message>
        <source>List of entity colours</source>
        <translation>Liste der Objektfarben</translation>
    </message>
    <message>
        <source>Where $LNGSL.DAT lies</source>
        <translation>Wo $LNGSL.DAT liegt</translation>
    </message>
    <message>
        <source>Shapes</source>
        <translation>Shapes</translation>
    </message>
    <message>
        <source>What the shapefile holds, which holds one kind</source>
        <translation>Was das Shapefile enthält, das nur eine Art enthält</translation>
    </message>
    <message>
        <source>Points and texts</source>
        <translation>Punkte und Texte</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>Areas</source>
        <translation>Flächen</translation>
    </message>
    <message>
        <source>Groups of points</source>
        <translation>Gruppen von Punkten</translation>
    </message>
    <message>
        <source>A file for each kind</source>
        <translation>Eine Datei für jede Art</translation>
    </message>
    <message>
        <source>Release of the drawing</source>
        <translation>Version der Zeichnung</translation>
    </message>
    <message>
        <source>2007 holds areas, true colours, any letters, and names as given</source>
        <translation>2007 kennt Flächen, Echtfarben, alle Buchstaben und Namen wie gegeben</translation>
    </message>
    <message>
        <source>R12 (AC1009)</source>
        <translation>R12 (AC1009)</translation>
    </message>
    <message>
        <source>2007 (AC1021)</source>
        <translation>2007 (AC1021)</translation>
    </message>
    <message>
        <source>Units in the header</source>
        <translation>Einheiten im Kopf</translation>
    </message>
    <message>
        <source>As the header of the file names them</source>
        <translation>Wie der Kopf der Datei sie nennt</translation>
    </message>
    <message>
        <source>usually M</source>
        <translation>üblich M</translation>
    </message>
    <message>
        <source>Map scale in the header</source>
        <translation>Kartenmaßstab im Kopf</translation>
    </message>
    <message>
        <source>A number, as 24000</source>
        <translation>Eine Zahl, wie 24000</translation>
    </message>
    <message>
        <source>usually 1</source>
        <translation>üblich 1</translation>
    </message>
    <message>
        <source>Points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>What becomes of points, which the drawing does not hold</source>
        <translation>Was aus Punkten wird, die die Zeichnung nicht kennt</translation>
    </message>
    <message>
        <source>Into a second file (.pts)</source>
        <translation>In eine zweite Datei (.pts)</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Weggelassen</translation>
    </message>
    <message>
        <source>Field of the townships</source>
        <translation>Feld der Townships</translation>
    </message>
    <message>
        <source>All three fields and the table, or the run asks</source>
        <translation>Alle drei Felder und die Tabelle, sonst wird gefragt</translation>
    </message>
    <message>
        <source>Field of the ranges</source>
        <translation>Feld der Ranges</translation>
    </message>
    <message>
        <source>Field of the sections</source>
        <translation>Feld der Sections</translation>
    </message>
    <message>
        <source>Table with these fields</source>
        <translation>Tabelle mit diesen Feldern</translation>
    </message>
    <message>
        <source>Without it, the shapefile&apos;s own</source>
        <translation>Ohne sie die eigene des Shapefiles</translation>
    </message>
    <message>
        <source>Bare line feeds</source>
        <translation>Zeilenenden ohne CR</translation>
    </message>
    <message>
        <source>What to do with a file that has such line ends</source>
        <translation>Was mit einer Datei geschieht, die solche Zeilenenden hat</translation>
    </message>
    <message>
        <source>Read the file as it is</source>
        <translation>Die Datei lesen, wie sie ist</translation>
    </message>
    <message>
        <source>Repair the file itself</source>
        <translation>Die Datei selbst reparieren</translation>
    </message>
    <message>
        <source>Tolerance of curves</source>
        <translation>Toleranz von Kurven</translation>
    </message>
    <message>
        <source>Greatest distance between a curve and its chain, in units of the drawing</source>
        <translation>Größter Abstand zwischen einer Kurve und ihrem Linienzug, in Einheiten der Zeichnung</translation>
    </message>
    <message>
        <source>Layer field</source>
        <translation>Layerfeld</translation>
    </message>
    <message>
        <source>The field that names the layer of each shape</source>
        <translation>Das Feld, das den Layer jedes Shapes nennt</translation>
    </message>
    <message>
        <source>Text field or template</source>
        <translation>Textfeld oder Vorlage</translation>
    </message>
    <message>
        <source>What is written at each shape: a field, or several in braces</source>
        <translation>Was an jedes Shape geschrieben wird: ein Feld oder mehrere in geschweiften Klammern</translation>
    </message>
    <message>
        <source>as in {NAME} ({DEPTH} ft)</source>
        <translation>wie {NAME} ({DEPTH} ft)</translation>
    </message>
    <message>
        <source>Height of texts</source>
        <translation>Höhe der Texte</translation>
    </message>
    <message>
        <source>A number, or the field that holds it</source>
        <translation>Eine Zahl oder das Feld, das sie enthält</translation>
    </message>
    <message>
        <source>Angle of texts</source>
        <translation>Winkel der Texte</translation>
    </message>
    <message>
        <source>Degrees, or the field that holds them</source>
        <translation>Grad oder das Feld, das sie enthält</translation>
    </message>
    <message>
        <source>Colour field</source>
        <translation>Farbfeld</translation>
    </message>
    <message>
        <source>The field with the colour of shapes and texts: a number, a name or #rrggbb</source>
        <translation>Das Feld mit der Farbe von Shapes und Texten: eine Zahl, ein Name oder #rrggbb</translation>
    </message>
    <message>
        <source>Attributes</source>
        <translation>Attribute</translation>
    </message>
    <message>
        <source>Whether they go along, where the output holds them</source>
        <translation>Ob sie mitgehen, wo die Ausgabe sie aufnimmt</translation>
    </message>
    <message>
        <source>Go along</source>
        <translation>Gehen mit</translation>
    </message>
    <message>
        <source>Stay behind</source>
        <translation>Bleiben zurück</translation>
    </message>
    <message>
        <source>Only these layers</source>
        <translation>Nur diese Layer</translation>
    </message>
    <message>
        <source>Names with commas between them; * and ? stand for letters, :off, :frozen and :locked for layers that are</source>
        <translation>Namen mit Kommas dazwischen; * und ? stehen für Buchstaben, :off, :frozen und :locked für Layer, die es sind</translation>
    </message>
    <message>
        <source>as in WELLS, ROAD*</source>
        <translation>wie WELLS, ROAD*</translation>
    </message>
    <message>
        <source>Without these layers</source>
        <translation>Ohne diese Layer</translation>
    </message>
    <message>
        <source>as in DEFPOINTS, :off</source>
        <translation>wie DEFPOINTS, :off</translation>
    </message>
    <message>
        <source>Only within</source>
        <translation>Nur innerhalb</translation>
    </message>
    <message>
        <source>Two opposite corners; what touches the window comes whole</source>
        <translation>Zwei gegenüberliegende Ecken; was das Rechteck berührt, kommt ganz</translation>
    </message>
    <message>
        <source>Codes of layers</source>
        <translation>Codes der Layer</translation>
    </message>
    <message>
        <source>A list (CSV) with the columns layer and code, instead of the question</source>
        <translation>Eine Liste (CSV) mit den Spalten layer und code, anstelle der Frage</translation>
    </message>
    <message>
        <source>Guess codes from the names of layers</source>
        <translation>Codes nach den Namen der Layer raten</translation>
    </message>
    <message>
        <source>After remembered ones, instead of the question</source>
        <translation>Nach den gemerkten, anstelle der Frage</translation>
    </message>
    <message>
        <source>System of the input</source>
        <translation>System der Eingabe</translation>
    </message>
    <message>
        <source>A code, a .prj or WKT file, or a PROJ text; it counts before a .prj file beside</source>
        <translation>Ein Code, eine .prj- oder WKT-Datei oder ein PROJ-Text; zählt mehr als eine .prj-Datei daneben</translation>
    </message>
    <message>
        <source>as in EPSG:32039</source>
        <translation>wie EPSG:32039</translation>
    </message>
    <message>
        <source>Transform into</source>
        <translation>Umrechnen nach</translation>
    </message>
    <message>
        <source>The system of the output, given likewise</source>
        <translation>Das System der Ausgabe, ebenso angegeben</translation>
    </message>
    <message>
        <source>as in EPSG:4326</source>
        <translation>wie EPSG:4326</translation>
    </message>
    <message>
        <source>Go on without a missing grid</source>
        <translation>Ohne ein fehlendes Gitter weitermachen</translation>
    </message>
    <message>
        <source>With the next best way between the systems, however rough</source>
        <translation>Mit dem nächstbesten Weg zwischen den Systemen, so grob er ist</translation>
    </message>
    <message>
        <source>Make areas of lines</source>
        <translation>Flächen aus Linien bilden</translation>
    </message>
    <message>
        <source>Of what lines surround</source>
        <translation>Aus dem, was Linien umschließen</translation>
    </message>
    <message>
        <source>Close gaps up to</source>
        <translation>Lücken schließen bis</translation>
    </message>
    <message>
        <source>How far lines may miss each other that are to meet, in units of the drawing</source>
        <translation>Wie weit Linien sich verfehlen dürfen, die sich treffen sollen, in Einheiten der Zeichnung</translation>
    </message>
    <message>
        <source>Label areas from layers</source>
        <translation>Flächen beschriften aus Layern</translation>
    </message>
    <message>
        <source>Layers whose texts become the text of the area that they lie in</source>
        <translation>Layer, deren Texte zum Text der Fläche werden, in der sie liegen</translation>
    </message>
    <message>
        <source>Largest output</source>
        <translation>Größte Ausgabe</translation>
    </message>
    <message>
        <source>The run ends there; without it, 1 GiB or 200 times the input</source>
        <translation>Die Umwandlung endet dort; sonst bei 1 GiB oder dem 200-Fachen der Eingabe</translation>
    </message>
    <message>
        <source>as in 500M, 20G</source>
        <translation>wie 500M, 20G</translation>
    </message>
    <message>
        <source>Wait until it is on the disk</source>
        <translation>Warten, bis sie auf der Platte ist</translation>
    </message>
    <message>
        <source>Safe when the power fails; slower</source>
        <translation>Sicher bei Stromausfall; langsamer</translation>
    </message>
    <message>
        <source>Reading</source>
        <translation>Lesen</translation>
    </message>
    <message>
        <source>Attributes and labels</source>
        <translation>Attribute und Beschriftung</translation>
    </message>
    <message>
        <source>Layers and place</source>
        <translation>Layer und Ort</translation>
    </message>
    <message>
        <source>Coordinate systems</source>
        <translation>Koordinatensysteme</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <source>In the dialect Standard</source>
        <translation>Im Dialekt Standard</translation>
    </message>
    <message>
        <source>Where the output holds areas</source>
        <translation>Wo die Ausgabe Flächen kennt</translation>
    </message>
    <message>
        <source>Where areas are made of lines</source>
        <translation>Wo Flächen aus Linien gebildet werden</translation>
    </message>
    <message>
        <source>Where a text field is chosen</source>
        <translation>Wo ein Textfeld gewählt ist</translation>
    </message>
</context>
<context>
    <name>Summary</name>
    <message>
        <source>%1 point</source>
        <translation>%1 Punkt</translation>
    </message>
    <message>
        <source>%1 points</source>
        <translation>%1 Punkte</translation>
    </message>
    <message>
        <source>%1 line</source>
        <translation>%1 Linie</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Linien</translation>
    </message>
    <message>
        <source>%1 polyline</source>
        <translation>%1 Polylinie</translation>
    </message>
    <message>
        <source>%1 polylines</source>
        <translation>%1 Polylinien</translation>
    </message>
    <message>
        <source>%1 text</source>
        <translation>%1 Text</translation>
    </message>
    <message>
        <source>%1 texts</source>
        <translation>%1 Texte</translation>
    </message>
    <message>
        <source>%1 circle</source>
        <translation>%1 Kreis</translation>
    </message>
    <message>
        <source>%1 circles</source>
        <translation>%1 Kreise</translation>
    </message>
    <message>
        <source>%1 arc</source>
        <translation>%1 Bogen</translation>
    </message>
    <message>
        <source>%1 arcs</source>
        <translation>%1 Bögen</translation>
    </message>
    <message>
        <source>%1 other</source>
        <translation>%1 anderes</translation>
    </message>
    <message>
        <source>%1 others</source>
        <translation>%1 andere</translation>
    </message>
    <message>
        <source>%1 element</source>
        <translation>%1 Element</translation>
    </message>
    <message>
        <source>%1 elements</source>
        <translation>%1 Elemente</translation>
    </message>
    <message>
        <source>%1 vertex</source>
        <translation>%1 Stützpunkt</translation>
    </message>
    <message>
        <source>%1 vertices</source>
        <translation>%1 Stützpunkte</translation>
    </message>
    <message>
        <source>%1 written</source>
        <translation>%1 geschrieben</translation>
    </message>
    <message>
        <source>no output was written</source>
        <translation>keine Ausgabe wurde geschrieben</translation>
    </message>
    <message>
        <source>the output is incomplete; it holds %1</source>
        <translation>die Ausgabe ist unvollständig; sie enthält %1</translation>
    </message>
    <message>
        <source>the output is as it was before; what was converted lies beside it, with %1</source>
        <translation>die Ausgabe ist, wie sie vorher war; was umgewandelt wurde, liegt daneben, mit: %1</translation>
    </message>
    <message>
        <source>no elements</source>
        <translation>keine Elemente</translation>
    </message>
    <message>
        <source>%1 (and %2 more of this kind)</source>
        <translation>%1 (und %2 weitere dieser Art)</translation>
    </message>
    <message>
        <source>not read, and so not converted: %1 of type %2</source>
        <translation>nicht gelesen und daher nicht umgewandelt: %1 vom Typ %2</translation>
    </message>
    <message>
        <source>not written: %1</source>
        <translation>nicht geschrieben: %1</translation>
    </message>
    <message>
        <source>areas built: %1</source>
        <translation>gebildete Flächen: %1</translation>
    </message>
    <message>
        <source>areas built: %1, of %2</source>
        <translation>gebildete Flächen: %1, aus %2</translation>
    </message>
    <message>
        <source>Read: %1</source>
        <translation>Gelesen: %1</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>Written as another kind: %1</source>
        <translation>Als andere Art geschrieben: %1</translation>
    </message>
    <message>
        <source>Left out by layer: %1</source>
        <translation>Nach Layer ausgelassen: %1</translation>
    </message>
    <message>
        <source>Left out by clip: %1</source>
        <translation>Außerhalb des Fensters ausgelassen: %1</translation>
    </message>
    <message>
        <source>%1, in units of %2</source>
        <translation>%1, in der Einheit %2</translation>
    </message>
    <message>
        <source>accuracy unknown</source>
        <translation>Genauigkeit unbekannt</translation>
    </message>
    <message>
        <source>accuracy %1 m</source>
        <translation>Genauigkeit %1 m</translation>
    </message>
    <message>
        <source>, grid %1</source>
        <translation>, Gitter %1</translation>
    </message>
    <message>
        <source>by %1 (%2): %3</source>
        <translation>durch %1 (%2): %3</translation>
    </message>
    <message>
        <source>from %1</source>
        <translation>von %1</translation>
    </message>
    <message>
        <source>to %1</source>
        <translation>nach %1</translation>
    </message>
    <message>
        <source>coordinates: %1</source>
        <translation>Koordinaten: %1</translation>
    </message>
    <message>
        <source>more accurate were %1</source>
        <translation>genauer wären %1</translation>
    </message>
    <message>
        <source>about %1 remaining</source>
        <translation>noch etwa %1</translation>
    </message>
    <message>
        <source>not shown: %1 of type %2</source>
        <translation>nicht gezeigt: %1 vom Typ %2</translation>
    </message>
</context>
<context>
    <name>Warnings</name>
    <message>
        <source>What should be known of how the output came to its place, as of hard links.</source>
        <translation>Was man davon wissen sollte, wie die Ausgabe an ihren Platz kam, etwa von harten Links.</translation>
    </message>
    <message>
        <source>The attributes of an input, or all but what the output took of them, do not go along.</source>
        <translation>Die Attribute einer Eingabe gehen nicht mit, oder nur, was die Ausgabe davon übernimmt.</translation>
    </message>
    <message>
        <source>The name of an input&apos;s coordinate system does not go along.</source>
        <translation>Der Name des Koordinatensystems einer Eingabe geht nicht mit.</translation>
    </message>
    <message>
        <source>The .prj file of an input names no coordinate system that is known.</source>
        <translation>Die .prj-Datei einer Eingabe nennt kein bekanntes Koordinatensystem.</translation>
    </message>
    <message>
        <source>Coordinates whose system nobody knows were written where longitude and latitude belong, as was allowed.</source>
        <translation>Koordinaten in einem unbekannten System stehen nun, wo Länge und Breite hingehören; das war erlaubt.</translation>
    </message>
    <message>
        <source>Coordinates were transformed without what tells one datum from the other, as was allowed.</source>
        <translation>Koordinaten wurden ohne den Unterschied der geodätischen Daten umgerechnet; das war erlaubt.</translation>
    </message>
    <message>
        <source>Coordinates lie outside of the area for which the operation that transformed them is made.</source>
        <translation>Koordinaten liegen außerhalb des Gebiets, für das ihre Umrechnung gemacht ist.</translation>
    </message>
    <message>
        <source>Elements were left out since their coordinates have no place in the other coordinate system.</source>
        <translation>Elemente wurden ausgelassen, denn ihre Koordinaten haben im anderen Koordinatensystem keinen Ort.</translation>
    </message>
    <message>
        <source>In the classic dialect a shape takes its attributes from the row behind its own.</source>
        <translation>Im Dialekt „Classic“ nimmt ein Shape seine Attribute aus der Zeile hinter seiner eigenen.</translation>
    </message>
    <message>
        <source>What other programs are known to misread in a classic file; the standard dialect keeps it.</source>
        <translation>Was andere Programme in einer Datei des Dialekts „Classic“ falsch lesen; „Standard“ erhält es.</translation>
    </message>
    <message>
        <source>Circles and arcs that look geographic were written in UTM metres.</source>
        <translation>Kreise und Bögen, die geographisch aussehen, wurden in UTM-Metern geschrieben.</translation>
    </message>
    <message>
        <source>z values that the output cannot hold were left out.</source>
        <translation>z-Werte, die die Ausgabe nicht halten kann, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>Areas became the closed chains around them.</source>
        <translation>Flächen wurden zu den geschlossenen Linienzügen um sie herum.</translation>
    </message>
    <message>
        <source>Elements of several parts became an element for each part.</source>
        <translation>Elemente aus mehreren Teilen wurden je Teil zu einem Element.</translation>
    </message>
    <message>
        <source>Records of a shapefile that have no vertices, of which the output can hold nothing.</source>
        <translation>Datensätze eines Shapefiles ohne Stützpunkte, von denen die Ausgabe nichts halten kann.</translation>
    </message>
    <message>
        <source>Areas whose rings ran the wrong way for a shapefile, in which outer ones run clockwise.</source>
        <translation>Flächen, deren Ringe für ein Shapefile falsch herum liefen: Äußere laufen dort im Uhrzeigersinn.</translation>
    </message>
    <message>
        <source>Curves became chains of straight segments.</source>
        <translation>Kurven wurden zu Zügen gerader Strecken.</translation>
    </message>
    <message>
        <source>Curves so large for their tolerance that their chain departs from them by more.</source>
        <translation>Kurven, so groß für ihre Toleranz, dass ihr Linienzug stärker von ihnen abweicht.</translation>
    </message>
    <message>
        <source>z values, radii or angles were rounded to single precision, as in the classic dialect.</source>
        <translation>z-Werte, Radien oder Winkel wurden auf einfache Genauigkeit gerundet, wie im Dialekt „Classic“.</translation>
    </message>
    <message>
        <source>Elements that the drawing marks as invisible are in the output like others.</source>
        <translation>Elemente, die die Zeichnung als unsichtbar kennzeichnet, stehen in der Ausgabe wie andere.</translation>
    </message>
    <message>
        <source>Elements lie on layers that the drawing does not show.</source>
        <translation>Elemente liegen auf Layern, die die Zeichnung nicht zeigt.</translation>
    </message>
    <message>
        <source>A layer was to be taken or left out on which no element lies.</source>
        <translation>Auf einem Layer, der genommen oder ausgelassen werden sollte, liegt kein Element.</translation>
    </message>
    <message>
        <source>Hatches came as the areas that they fill, without pattern or fill.</source>
        <translation>Schraffuren kamen als die Flächen, die sie füllen, ohne Muster und Füllung.</translation>
    </message>
    <message>
        <source>Lines of text that are wider than their text is said to be; CAD breaks them by the font.</source>
        <translation>Textzeilen, die breiter sind als für ihren Text angegeben; CAD bricht sie nach der Schrift um.</translation>
    </message>
    <message>
        <source>Images came as their outlines without the picture, wipeouts as areas that hide nothing.</source>
        <translation>Bilder kamen als ihr Umriss ohne das Bild, Abdeckungen als Flächen, die nichts verdecken.</translation>
    </message>
    <message>
        <source>Data that other applications attached to elements of a drawing are lost.</source>
        <translation>Daten, die andere Anwendungen an Elemente einer Zeichnung gehängt haben, sind verloren.</translation>
    </message>
    <message>
        <source>Line widths and weights, thickness, arrow heads, fonts, the shape of letters and formats within texts are lost.</source>
        <translation>Linienbreiten und -stärken, Dicke, Pfeilspitzen, Schriften, Form der Buchstaben und Formate in Texten sind verloren.</translation>
    </message>
    <message>
        <source>Sizes of texts were rounded to whole numbers.</source>
        <translation>Textgrößen wurden auf ganze Zahlen gerundet.</translation>
    </message>
    <message>
        <source>Elements lost their layer.</source>
        <translation>Elemente haben ihren Layer verloren.</translation>
    </message>
    <message>
        <source>Elements lost their line type.</source>
        <translation>Elemente haben ihren Linientyp verloren.</translation>
    </message>
    <message>
        <source>Elements lost their colour, or got the nearest that has a name.</source>
        <translation>Elemente haben ihre Farbe verloren oder die nächste erhalten, die einen Namen hat.</translation>
    </message>
    <message>
        <source>Colours that no number has became the nearest that has one.</source>
        <translation>Farben ohne Nummer wurden zur nächsten, die eine hat.</translation>
    </message>
    <message>
        <source>Points lost their symbol or its angle.</source>
        <translation>Punkte haben ihr Symbol oder dessen Winkel verloren.</translation>
    </message>
    <message>
        <source>Texts lost their justification.</source>
        <translation>Texte haben ihre Ausrichtung verloren.</translation>
    </message>
    <message>
        <source>Texts that stood on their baseline stand on their bottom.</source>
        <translation>Texte, die auf ihrer Grundlinie standen, stehen auf ihrer Unterkante.</translation>
    </message>
    <message>
        <source>Elements lost their entity code.</source>
        <translation>Elemente haben ihren Objektcode verloren.</translation>
    </message>
    <message>
        <source>Layers without an entity type, and their colours, do not go along.</source>
        <translation>Layer ohne Objektart und ihre Farben gehen nicht mit.</translation>
    </message>
    <message>
        <source>Points of one element became points of their own.</source>
        <translation>Punkte eines Elements wurden zu eigenen Punkten.</translation>
    </message>
    <message>
        <source>Closed chains are closed by their last vertex alone.</source>
        <translation>Geschlossene Linienzüge sind nur durch ihren letzten Stützpunkt geschlossen.</translation>
    </message>
    <message>
        <source>Ends of lines that meet no other line where areas were built: gaps, or lines that run beyond a boundary.</source>
        <translation>Linienenden, die beim Bilden von Flächen auf keine andere Linie treffen: Lücken, oder Linien, die über eine Grenze hinausgehen.</translation>
    </message>
    <message>
        <source>Lines that have the same area, or none, on both sides, where areas were built.</source>
        <translation>Linien, die beim Bilden von Flächen auf beiden Seiten dieselbe Fläche haben oder keine.</translation>
    </message>
    <message>
        <source>Rings of lines that bound no valid area.</source>
        <translation>Ringe aus Linien, die keine gültige Fläche begrenzen.</translation>
    </message>
    <message>
        <source>Lines that bound no area, for a coordinate is no finite number.</source>
        <translation>Linien, die keine Fläche begrenzen, denn eine Koordinate ist keine endliche Zahl.</translation>
    </message>
    <message>
        <source>Texts of the label layers that lie in no area.</source>
        <translation>Texte der Beschriftungslayer, die in keiner Fläche liegen.</translation>
    </message>
    <message>
        <source>Areas with several texts of the label layers, joined in one.</source>
        <translation>Flächen mit mehreren Texten der Beschriftungslayer, zu einem verbunden.</translation>
    </message>
    <message>
        <source>Areas without a text of the label layers.</source>
        <translation>Flächen ohne einen Text der Beschriftungslayer.</translation>
    </message>
    <message>
        <source>Texts of nothing but blanks, of which CDF keeps the code alone.</source>
        <translation>Texte aus lauter Leerzeichen, von denen CDF nur den Code behält.</translation>
    </message>
    <message>
        <source>Closed chains that CDF does not mark as closed, since their entity code is not of 7 characters.</source>
        <translation>Geschlossene Linienzüge, die CDF nicht als geschlossen kennzeichnet, da ihr Objektcode nicht 7 Zeichen hat.</translation>
    </message>
    <message>
        <source>Coordinates lost digits behind the point, for which CDF columns have no room.</source>
        <translation>Koordinaten haben Nachkommastellen verloren, für die in den Spalten von CDF kein Platz ist.</translation>
    </message>
    <message>
        <source>Numbers that CDF columns do not hold became others.</source>
        <translation>Zahlen, die die Spalten von CDF nicht fassen, wurden zu anderen.</translation>
    </message>
    <message>
        <source>Texts were cut to the CDF columns.</source>
        <translation>Texte wurden auf die Spalten von CDF gekürzt.</translation>
    </message>
    <message>
        <source>Values were cut to the length of their field in the attribute table.</source>
        <translation>Werte wurden auf die Länge ihres Feldes in der Attributtabelle gekürzt.</translation>
    </message>
    <message>
        <source>A &quot;|&quot; in a value became a blank, since it separates values.</source>
        <translation>Ein „|“ in einem Wert wurde zum Leerzeichen, da es Werte trennt.</translation>
    </message>
    <message>
        <source>Characters that would end a line or a text became blanks.</source>
        <translation>Zeichen, die eine Zeile oder einen Text beenden würden, wurden zu Leerzeichen.</translation>
    </message>
    <message>
        <source>Letters that the code page of the output lacks became question marks.</source>
        <translation>Buchstaben, die der Codepage der Ausgabe fehlen, wurden zu Fragezeichen.</translation>
    </message>
    <message>
        <source>A number that is no colour of a drawing became that of the layer.</source>
        <translation>Eine Nummer, die keine Farbe einer Zeichnung ist, wurde zu der des Layers.</translation>
    </message>
    <message>
        <source>Vertices at (0, 0, 0) count as missing in a classic drawing and were left out.</source>
        <translation>Stützpunkte bei (0, 0, 0) gelten in einer Zeichnung des Dialekts „Classic“ als fehlend und wurden ausgelassen.</translation>
    </message>
    <message>
        <source>An arc of more than 2,000 turns was cut short.</source>
        <translation>Ein Bogen von mehr als 2.000 Umdrehungen wurde gekürzt.</translation>
    </message>
    <message>
        <source>A point file beside the output is older than this conversion.</source>
        <translation>Eine Punktdatei neben der Ausgabe ist älter als diese Umwandlung.</translation>
    </message>
    <message>
        <source>Attribute fields that could not be carried along.</source>
        <translation>Attributfelder, die nicht mitgenommen werden konnten.</translation>
    </message>
    <message>
        <source>Attribute fields have another name in the output.</source>
        <translation>Attributfelder heißen in der Ausgabe anders.</translation>
    </message>
    <message>
        <source>Values were left out, since an entity of a drawing holds 16 KB of attributes.</source>
        <translation>Werte wurden ausgelassen, denn ein Objekt einer Zeichnung fasst 16 KB Attribute.</translation>
    </message>
    <message>
        <source>Texts of a drawing that only repeat what their record says are no records of their own.</source>
        <translation>Texte einer Zeichnung, die nur wiederholen, was ihr Datensatz sagt, sind keine eigenen Datensätze.</translation>
    </message>
    <message>
        <source>Elements of a drawing without attributes have empty rows, while others have theirs.</source>
        <translation>Elemente einer Zeichnung ohne Attribute haben leere Zeilen, während andere die ihren haben.</translation>
    </message>
    <message>
        <source>The inputs name different coordinate systems, so none was written.</source>
        <translation>Die Eingaben nennen verschiedene Koordinatensysteme; daher wurde keines geschrieben.</translation>
    </message>
    <message>
        <source>A .prj file beside the output was there before and may not belong to it.</source>
        <translation>Eine .prj-Datei neben der Ausgabe war schon vorher da und gehört vielleicht nicht zu ihr.</translation>
    </message>
    <message>
        <source>The table has no row for an element of a T/R Digitizer file.</source>
        <translation>Die Tabelle hat keine Zeile für ein Element einer T/R-Digitizer-Datei.</translation>
    </message>
    <message>
        <source>A comma, a quote or a control character in a table&apos;s value became a blank.</source>
        <translation>Ein Komma, ein Anführungs- oder ein Steuerzeichen in einem Wert der Tabelle wurde zum Leerzeichen.</translation>
    </message>
    <message>
        <source>The index of a shapefile is missing or does not fit; its records were read one behind the other.</source>
        <translation>Der Index eines Shapefiles fehlt oder passt nicht; seine Datensätze wurden der Reihe nach gelesen.</translation>
    </message>
    <message>
        <source>Bytes of a shapefile that belong to no record were not read.</source>
        <translation>Bytes eines Shapefiles, die zu keinem Datensatz gehören, wurden nicht gelesen.</translation>
    </message>
    <message>
        <source>The index of a shapefile ends within an entry.</source>
        <translation>Der Index eines Shapefiles endet mitten in einem Eintrag.</translation>
    </message>
    <message>
        <source>Bytes of a shapefile that its index does not list were not read.</source>
        <translation>Bytes eines Shapefiles, die sein Index nicht aufführt, wurden nicht gelesen.</translation>
    </message>
    <message>
        <source>A record gives itself an impossible length and was skipped.</source>
        <translation>Ein Datensatz gibt für sich eine unmögliche Länge an und wurde übergangen.</translation>
    </message>
    <message>
        <source>The index lists the same bytes more than once.</source>
        <translation>Der Index führt dieselben Bytes mehrmals auf.</translation>
    </message>
    <message>
        <source>The index gives a record too few bytes; its own length was taken.</source>
        <translation>Der Index gibt einem Datensatz zu wenige Bytes; dessen eigene Länge wurde genommen.</translation>
    </message>
    <message>
        <source>The index points to where the file holds no record.</source>
        <translation>Der Index zeigt auf eine Stelle, an der die Datei keinen Datensatz hat.</translation>
    </message>
    <message>
        <source>A record is too short for what it should hold and was skipped.</source>
        <translation>Ein Datensatz ist zu kurz für das, was er enthalten sollte, und wurde übergangen.</translation>
    </message>
    <message>
        <source>A record announces more than it can hold and was skipped.</source>
        <translation>Ein Datensatz kündigt mehr an, als er enthalten kann, und wurde übergangen.</translation>
    </message>
    <message>
        <source>Points that belong to no part were left out.</source>
        <translation>Punkte, die zu keinem Teil gehören, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>A record has no room for the z values of its type.</source>
        <translation>Ein Datensatz hat keinen Platz für die z-Werte seines Typs.</translation>
    </message>
    <message>
        <source>m values were left out.</source>
        <translation>m-Werte wurden ausgelassen.</translation>
    </message>
    <message>
        <source>The parts of a record overlap or lie outside of it.</source>
        <translation>Die Teile eines Datensatzes überschneiden sich oder liegen außerhalb.</translation>
    </message>
    <message>
        <source>MultiPatch shapes were read as closed chains.</source>
        <translation>MultiPatch-Shapes wurden als geschlossene Linienzüge gelesen.</translation>
    </message>
    <message>
        <source>Strips and fans of triangles were read as their outlines.</source>
        <translation>Streifen und Fächer aus Dreiecken wurden als ihre Umrisse gelesen.</translation>
    </message>
    <message>
        <source>z values that are no number or too large were read as 0.</source>
        <translation>z-Werte, die keine Zahl oder zu groß sind, wurden als 0 gelesen.</translation>
    </message>
    <message>
        <source>Vertices of a drawing that are no numbers were left out.</source>
        <translation>Stützpunkte einer Zeichnung, die keine Zahlen sind, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>Vertices of a shapefile that are no finite numbers were left out.</source>
        <translation>Stützpunkte eines Shapefiles, die keine endlichen Zahlen sind, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>An attribute table that nobody asked for cannot be read.</source>
        <translation>Eine Attributtabelle, nach der niemand gefragt hat, lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>The attribute table has fewer rows than there are shapes.</source>
        <translation>Die Attributtabelle hat weniger Zeilen, als es Shapes gibt.</translation>
    </message>
    <message>
        <source>An attribute table names an encoding that is not known.</source>
        <translation>Eine Attributtabelle nennt eine unbekannte Zeichenkodierung.</translation>
    </message>
    <message>
        <source>Bytes that are no letters of the encoding became U+FFFD.</source>
        <translation>Bytes, die keine Buchstaben der Zeichenkodierung sind, wurden zu U+FFFD.</translation>
    </message>
    <message>
        <source>Texts of a table&apos;s memo fields that could not be read, or not whole.</source>
        <translation>Texte aus Memofeldern einer Tabelle, die nicht oder nicht ganz gelesen werden konnten.</translation>
    </message>
    <message>
        <source>Values of a table&apos;s field that are not read and so are empty.</source>
        <translation>Werte eines Feldes der Tabelle, die nicht gelesen werden und daher leer sind.</translation>
    </message>
    <message>
        <source>An attribute field that the table does not have; its first one was used.</source>
        <translation>Ein Attributfeld, das die Tabelle nicht hat; ihr erstes wurde genommen.</translation>
    </message>
    <message>
        <source>Labels have a height that the size of the drawing tells.</source>
        <translation>Beschriftungen haben eine Höhe, die sich aus der Größe der Zeichnung ergibt.</translation>
    </message>
    <message>
        <source>Values of a table that should be the height or the angle of a label and cannot be; the usual one was taken.</source>
        <translation>Werte einer Tabelle, die Höhe oder Winkel einer Beschriftung sein sollten und es nicht sein können; der übliche Wert wurde genommen.</translation>
    </message>
    <message>
        <source>Values of a table that should be a colour and are none.</source>
        <translation>Werte einer Tabelle, die eine Farbe sein sollten und keine sind.</translation>
    </message>
    <message>
        <source>Shapes were left out because their row is marked as deleted.</source>
        <translation>Shapes wurden ausgelassen, da ihre Zeile als gelöscht gekennzeichnet ist.</translation>
    </message>
    <message>
        <source>The list of entity types was not found.</source>
        <translation>Die Liste der Objektarten wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The list of entity colours was not found.</source>
        <translation>Die Liste der Objektfarben wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>A list of entity types or colours is there and could not be read.</source>
        <translation>Eine Liste der Objektarten oder -farben ist da und konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Lines that are none of a CDF drawing were skipped.</source>
        <translation>Zeilen, die nicht zu einer CDF-Zeichnung gehören, wurden übergangen.</translation>
    </message>
    <message>
        <source>An element of a CDF drawing has no entity code.</source>
        <translation>Ein Element einer CDF-Zeichnung hat keinen Objektcode.</translation>
    </message>
    <message>
        <source>The file holds no record of its format.</source>
        <translation>Die Datei enthält keinen Datensatz ihres Formats.</translation>
    </message>
    <message>
        <source>CDF headers without an element behind them.</source>
        <translation>CDF-Köpfe, hinter denen kein Element steht.</translation>
    </message>
    <message>
        <source>CDF coordinates behind another letter than U and D.</source>
        <translation>CDF-Koordinaten hinter einem anderen Buchstaben als U und D.</translation>
    </message>
    <message>
        <source>CDF coordinates without an x.</source>
        <translation>CDF-Koordinaten ohne ein x.</translation>
    </message>
    <message>
        <source>What stands behind the last coordinates of a CDF line was not read.</source>
        <translation>Was hinter den letzten Koordinaten einer CDF-Zeile steht, wurde nicht gelesen.</translation>
    </message>
    <message>
        <source>A first x or y of exactly 0 gave way to that of the next vertex.</source>
        <translation>Ein erstes x oder y von genau 0 wich dem des nächsten Stützpunkts.</translation>
    </message>
    <message>
        <source>The points beside a CDF drawing were not read.</source>
        <translation>Die Punkte neben einer CDF-Zeichnung wurden nicht gelesen.</translation>
    </message>
    <message>
        <source>The drawing elements of a map overlay are not decoded.</source>
        <translation>Die Zeichnungselemente eines Karten-Overlays werden nicht entschlüsselt.</translation>
    </message>
    <message>
        <source>Landmark vertices outside of a record were not read.</source>
        <translation>Landmark-Stützpunkte außerhalb eines Datensatzes wurden nicht gelesen.</translation>
    </message>
    <message>
        <source>A Landmark record that begins on the last line was not read.</source>
        <translation>Ein Landmark-Datensatz, der in der letzten Zeile beginnt, wurde nicht gelesen.</translation>
    </message>
    <message>
        <source>A VECTOR line took the place of its record&apos;s first vertices.</source>
        <translation>Eine VECTOR-Zeile trat an die Stelle der ersten Stützpunkte ihres Datensatzes.</translation>
    </message>
    <message>
        <source>A VECTOR line begins where its chain does not end; they were joined.</source>
        <translation>Eine VECTOR-Zeile beginnt nicht, wo ihr Linienzug endet; sie wurden verbunden.</translation>
    </message>
    <message>
        <source>Lines of a drawing that are no group code were passed over.</source>
        <translation>Zeilen einer Zeichnung, die kein Gruppencode sind, wurden übergangen.</translation>
    </message>
    <message>
        <source>A text of a binary drawing does not end.</source>
        <translation>Ein Text einer binären Zeichnung endet nicht.</translation>
    </message>
    <message>
        <source>Vertices beyond the announced size of a mesh were left out.</source>
        <translation>Stützpunkte über die angekündigte Größe eines Netzes hinaus wurden ausgelassen.</translation>
    </message>
    <message>
        <source>An area has so many rings that its holes were not told from its areas, or not by where they lie.</source>
        <translation>Eine Fläche hat so viele Ringe, dass ihre Löcher nicht, oder nicht nach ihrer Lage, von ihren Flächen unterschieden wurden.</translation>
    </message>
    <message>
        <source>Faces that do not name vertices were left out.</source>
        <translation>Flächen eines Netzes, die keine Stützpunkte nennen, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>A value of a drawing should be a number and is none.</source>
        <translation>Ein Wert einer Zeichnung sollte eine Zahl sein und ist keine.</translation>
    </message>
    <message>
        <source>An array of inserts is too large and was read as its first insertion.</source>
        <translation>Ein Raster von Einfügungen ist zu groß und wurde als seine erste Einfügung gelesen.</translation>
    </message>
    <message>
        <source>Inserts of blocks came as points; what the blocks draw was not converted.</source>
        <translation>Einfügungen von Blöcken kamen als Punkte; was die Blöcke zeichnen, wurde nicht umgewandelt.</translation>
    </message>
    <message>
        <source>Blocks came as what they draw; their names, and where they were inserted, do not go along.</source>
        <translation>Blöcke kamen als das, was sie zeichnen; ihre Namen und Einfügepunkte gehen nicht mit.</translation>
    </message>
    <message>
        <source>Inserts of blocks that the drawing does not hold.</source>
        <translation>Einfügungen von Blöcken, die die Zeichnung nicht enthält.</translation>
    </message>
    <message>
        <source>Inserts of blocks that lie in another file.</source>
        <translation>Einfügungen von Blöcken, die in einer anderen Datei liegen.</translation>
    </message>
    <message>
        <source>Inserts of blocks that draw nothing were left out.</source>
        <translation>Einfügungen von Blöcken, die nichts zeichnen, wurden ausgelassen.</translation>
    </message>
    <message>
        <source>A block that inserts itself was left out within itself.</source>
        <translation>Ein Block, der sich selbst einfügt, wurde in sich ausgelassen.</translation>
    </message>
    <message>
        <source>A spline could not be evaluated; straight segments stand for it.</source>
        <translation>Ein Spline ließ sich nicht auswerten; gerade Strecken stehen für ihn.</translation>
    </message>
    <message>
        <source>The table of colours could not be read.</source>
        <translation>Die Farbtabelle konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>Entities of paper space were left out.</source>
        <translation>Objekte des Papierbereichs wurden ausgelassen.</translation>
    </message>
    <message>
        <source>An entity of a drawing lacks what it needs and was skipped.</source>
        <translation>Einem Objekt einer Zeichnung fehlt, was es braucht; es wurde übergangen.</translation>
    </message>
    <message>
        <source>The drawing ends without EOF.</source>
        <translation>Die Zeichnung endet ohne EOF.</translation>
    </message>
    <message>
        <source>The drawing names a code page that is not known.</source>
        <translation>Die Zeichnung nennt eine unbekannte Codepage.</translation>
    </message>
    <message>
        <source>Entity codes of other than 7 characters.</source>
        <translation>Objektcodes mit anderen als 7 Zeichen.</translation>
    </message>
    <message>
        <source>Names in a list of layers and codes that are no layer of the input.</source>
        <translation>Namen in einer Liste von Layern und Codes, die kein Layer der Eingabe sind.</translation>
    </message>
    <message>
        <source>The list of entity types holds none.</source>
        <translation>Die Liste der Objektarten enthält keine.</translation>
    </message>
    <message>
        <source>Layers without an entity code.</source>
        <translation>Layer ohne Objektcode.</translation>
    </message>
    <message>
        <source>Layers and line types have other names in the drawing, which allows fewer characters, or whose code page lacks letters of theirs.</source>
        <translation>Layer und Linientypen heißen in der Zeichnung anders, die weniger Zeichen erlaubt oder deren Codepage Buchstaben fehlen.</translation>
    </message>
</context>
<context>
    <name>tesselink::AboutBox</name>
    <message>
        <source>About Tesselink</source>
        <translation>Über Tesselink</translation>
    </message>
    <message>
        <source>Converts drawings between the formats of mapping packages.</source>
        <translation>Wandelt Zeichnungen zwischen den Formaten von Kartenprogrammen um.</translation>
    </message>
    <message>
        <source>Built on Qt %1 (LGPL), PROJ (coordinate systems), GEOS (areas), SQLite (GeoPackages) and SimpleIni.</source>
        <translation>Beruht auf Qt %1 (LGPL), PROJ (Koordinatensysteme), GEOS (Flächen), SQLite (GeoPackages) und SimpleIni.</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
</context>
<context>
    <name>tesselink::DialectLine</name>
    <message>
        <source>What the dialect does</source>
        <translation>Was der Dialekt bewirkt</translation>
    </message>
    <message>
        <source>the conventions that existing files rest on</source>
        <translation>die Gepflogenheiten, auf denen vorhandene Dateien beruhen</translation>
    </message>
    <message>
        <source>files as other programs read and write them</source>
        <translation>Dateien, wie andere Programme sie lesen und schreiben</translation>
    </message>
    <message>
        <source>%1; and %2 more</source>
        <translation>%1; und %2 weitere</translation>
    </message>
    <message>
        <source>Classic: %1.</source>
        <translation>Classic: %1.</translation>
    </message>
    <message>
        <source>Standard: %1.</source>
        <translation>Standard: %1.</translation>
    </message>
</context>
<context>
    <name>tesselink::DropHint</name>
    <message>
        <source>Drop to use as the input</source>
        <translation>Loslassen, um dies als Eingabe zu nehmen</translation>
    </message>
</context>
<context>
    <name>tesselink::ElementPanel</name>
    <message>
        <source>Close what is told of the element</source>
        <translation>Schließen, was über das Element gesagt wird</translation>
    </message>
    <message>
        <source>About the element</source>
        <translation>Über das Element</translation>
    </message>
    <message>
        <source>Looking for it in the file, %1%</source>
        <translation>Wird in der Datei gesucht, %1%</translation>
    </message>
    <message>
        <source>The drawing is thinned: other elements may lie here too.</source>
        <translation>Die Zeichnung ist ausgedünnt: Hier können noch andere Elemente liegen.</translation>
    </message>
    <message>
        <source>The element</source>
        <translation>Das Element</translation>
    </message>
    <message>
        <source>area</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>point</source>
        <translation>Punkt</translation>
    </message>
    <message>
        <source>text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>circle</source>
        <translation>Kreis</translation>
    </message>
    <message>
        <source>arc</source>
        <translation>Bogen</translation>
    </message>
    <message>
        <source>closed line</source>
        <translation>geschlossene Linie</translation>
    </message>
    <message>
        <source>line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Layer</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>Place in the file</source>
        <translation>Stelle in der Datei</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Datensatz</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Radius</source>
        <translation>Radius</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Vertices</source>
        <translation>Stützpunkte</translation>
    </message>
    <message>
        <source>Line type</source>
        <translation>Linientyp</translation>
    </message>
    <message>
        <source>Entity code</source>
        <translation>Objektcode</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>(empty)</source>
        <translation>(leer)</translation>
    </message>
</context>
<context>
    <name>tesselink::EngineCall</name>
    <message>
        <source>%1 could not be started: %2</source>
        <translation>%1 konnte nicht gestartet werden: %2</translation>
    </message>
    <message>
        <source>The program ended: %1</source>
        <translation>Das Programm endete: %1</translation>
    </message>
</context>
<context>
    <name>tesselink::FrmScan</name>
    <message>
        <source>Scanning...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Part of the file that was scanned</source>
        <translation>Durchsuchter Teil der Datei</translation>
    </message>
    <message>
        <source>Scanning file for Layers...</source>
        <translation>Datei wird nach Layern durchsucht...</translation>
    </message>
</context>
<context>
    <name>tesselink::HelpWindow</name>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Using Tesselink</source>
        <translation>Tesselink benutzen</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
</context>
<context>
    <name>tesselink::InputBox</name>
    <message>
        <source>The file, or the folder that it lies in</source>
        <translation>Die Datei oder der Ordner, in dem sie liegt</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Asks again: the conversion cannot go on without the file</source>
        <translation>Fragt noch einmal: Ohne die Datei kann die Umwandlung nicht weitergehen</translation>
    </message>
    <message>
        <source>Browsing...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>All Files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
</context>
<context>
    <name>tesselink::InputPanel</name>
    <message>
        <source>Input Parameters</source>
        <translation>Eingabe</translation>
    </message>
    <message>
        <source>Input Format</source>
        <translation>Eingabeformat</translation>
    </message>
    <message>
        <source>Input File</source>
        <translation>Eingabedatei</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Browse for the input file</source>
        <translation>Die Eingabedatei auswählen</translation>
    </message>
    <message>
        <source>Browse for several shapefiles</source>
        <translation>Mehrere Shapefiles auswählen</translation>
    </message>
    <message>
        <source>&amp;Recent</source>
        <translation>&amp;Zuletzt</translation>
    </message>
    <message>
        <source>Inputs of the last conversions</source>
        <translation>Eingaben der letzten Umwandlungen</translation>
    </message>
    <message>
        <source>About the input file</source>
        <translation>Über die Eingabedatei</translation>
    </message>
    <message>
        <source>&amp;Input Format:</source>
        <translation>Eingabe&amp;format:</translation>
    </message>
    <message>
        <source>Input &amp;File</source>
        <translation>&amp;Eingabedatei</translation>
    </message>
    <message>
        <source>%1 files selected</source>
        <translation>%1 Dateien ausgewählt</translation>
    </message>
    <message>
        <source>Fields: %1</source>
        <translation>Felder: %1</translation>
    </message>
    <message>
        <source>Browsing...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>All drawings</source>
        <translation>Alle Zeichnungen</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Error %1: %2</source>
        <translation>Fehler %1: %2</translation>
    </message>
    <message>
        <source>Select Shape File Directory...</source>
        <translation>Ordner der Shapefiles wählen...</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>No conversions yet</source>
        <translation>Noch keine Umwandlungen</translation>
    </message>
    <message>
        <source>&amp;Forget these</source>
        <translation>Diese &amp;vergessen</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
</context>
<context>
    <name>tesselink::LayerChoice</name>
    <message>
        <source>Layers of the Drawing</source>
        <translation>Layer der Zeichnung</translation>
    </message>
    <message>
        <source>Layers of the drawing</source>
        <translation>Layer der Zeichnung</translation>
    </message>
    <message>
        <source>The preview shows no layers yet.</source>
        <translation>Die Vorschau zeigt noch keine Layer.</translation>
    </message>
</context>
<context>
    <name>tesselink::MainWindow</name>
    <message>
        <source>Tesselink File Conversion</source>
        <translation>Tesselink Dateiumwandlung</translation>
    </message>
    <message>
        <source>Tesselink File Converter</source>
        <translation>Tesselink Dateiumwandler</translation>
    </message>
    <message>
        <source>Ma&amp;ny Files...</source>
        <translation>&amp;Viele Dateien...</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abb&amp;rechen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Using this window</source>
        <translation>&amp;Dieses Fenster benutzen</translation>
    </message>
    <message>
        <source>&amp;About Tesselink</source>
        <translation>&amp;Über Tesselink</translation>
    </message>
    <message>
        <source>exists already. Replace it?</source>
        <translation>gibt es schon. Ersetzen?</translation>
    </message>
    <message>
        <source>exist already. Replace them?</source>
        <translation>gibt es schon. Ersetzen?</translation>
    </message>
</context>
<context>
    <name>tesselink::OptionRow</name>
    <message>
        <source>As usual</source>
        <translation>Wie üblich</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Wählen...</translation>
    </message>
    <message>
        <source>Draw</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Draw a rectangle in the preview</source>
        <translation>Ein Rechteck in der Vorschau zeichnen</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
</context>
<context>
    <name>tesselink::OptionsLink</name>
    <message>
        <source>Choose the input and the output file first.</source>
        <translation>Wählen Sie zuerst die Eingabe- und die Ausgabedatei.</translation>
    </message>
    <message>
        <source>Copied: paste it into a terminal.</source>
        <translation>Kopiert: in ein Terminal einfügen.</translation>
    </message>
    <message>
        <source>It asks for no entity types of layers, and gives none.</source>
        <translation>Er fragt nicht nach Objektarten der Layer und vergibt keine.</translation>
    </message>
</context>
<context>
    <name>tesselink::OptionsPane</name>
    <message>
        <source>Further options of this conversion</source>
        <translation>Weitere Möglichkeiten dieser Umwandlung</translation>
    </message>
    <message>
        <source>Cop&amp;y as command</source>
        <translation>Als &amp;Befehl kopieren</translation>
    </message>
    <message>
        <source>Puts the command line that does the same on the clipboard</source>
        <translation>Legt die Befehlszeile, die dasselbe tut, in die Zwischenablage</translation>
    </message>
    <message>
        <source>&amp;More</source>
        <translation>&amp;Mehr</translation>
    </message>
    <message>
        <source>&amp;More (%1 set)</source>
        <translation>&amp;Mehr (%1 gesetzt)</translation>
    </message>
    <message>
        <source>Set: %1</source>
        <translation>Gesetzt: %1</translation>
    </message>
    <message>
        <source>Further options</source>
        <translation>Weitere Möglichkeiten</translation>
    </message>
    <message>
        <source>The table has no field &quot;%1&quot;.</source>
        <translation>Die Tabelle hat kein Feld „%1“.</translation>
    </message>
</context>
<context>
    <name>tesselink::OutputPanel</name>
    <message>
        <source>Output Parameters</source>
        <translation>Ausgabe</translation>
    </message>
    <message>
        <source>Output Format</source>
        <translation>Ausgabeformat</translation>
    </message>
    <message>
        <source>Output File</source>
        <translation>Ausgabedatei</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Browse for the output file</source>
        <translation>Die Ausgabedatei auswählen</translation>
    </message>
    <message>
        <source>About the output file</source>
        <translation>Über die Ausgabedatei</translation>
    </message>
    <message>
        <source>&amp;Output Format:</source>
        <translation>Ausgabef&amp;ormat:</translation>
    </message>
    <message>
        <source>O&amp;utput File</source>
        <translation>A&amp;usgabedatei</translation>
    </message>
    <message>
        <source>Dialect</source>
        <translation>Dialekt</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Classic</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Classic: the conventions that existing files rest on.
Standard: files as other programs read and write them.</source>
        <translation>Classic: die Gepflogenheiten, auf denen vorhandene Dateien beruhen.
Standard: Dateien, wie andere Programme sie lesen und schreiben.</translation>
    </message>
    <message>
        <source>&amp;Dialect:</source>
        <translation>&amp;Dialekt:</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>%1 does not end in %2, as the names of this format do:
%3</source>
        <translation>%1 endet nicht auf %2, wie es die Namen dieses Formats tun:
%3</translation>
    </message>
    <message>
        <source>&amp;Name it %1</source>
        <translation>&amp;Umbenennen in %1</translation>
    </message>
    <message>
        <source>&amp;Write %1</source>
        <translation>%1 &amp;schreiben</translation>
    </message>
    <message>
        <source>&amp;Keep %1</source>
        <translation>%1 &amp;behalten</translation>
    </message>
    <message>
        <source>Browsing...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>All Files (*.*)</source>
        <translation>Alle Dateien (*.*)</translation>
    </message>
</context>
<context>
    <name>tesselink::PathNotes</name>
    <message>
        <source>Its folder may not be looked into: you lack the right.</source>
        <translation>In ihren Ordner darf nicht gesehen werden: Ihnen fehlt das Recht.</translation>
    </message>
    <message>
        <source>It cannot be looked up.</source>
        <translation>Sie kann nicht nachgeschlagen werden.</translation>
    </message>
    <message>
        <source>It may not be read: you lack the right.</source>
        <translation>Sie darf nicht gelesen werden: Ihnen fehlt das Recht.</translation>
    </message>
    <message>
        <source>This is a folder. Choose a file in it.</source>
        <translation>Dies ist ein Ordner. Wählen Sie eine Datei darin.</translation>
    </message>
    <message>
        <source>This is a device or a pipe, not a file on a disk.</source>
        <translation>Dies ist ein Gerät oder eine Pipe, keine Datei auf einer Platte.</translation>
    </message>
    <message>
        <source>There is no folder %1.</source>
        <translation>Einen Ordner %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>There is no file %1 in this folder.</source>
        <translation>Eine Datei %1 gibt es in diesem Ordner nicht.</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>Diese Datei ist leer.</translation>
    </message>
    <message>
        <source>This is a table. Choose the shapefile (.shp) beside it.</source>
        <translation>Dies ist eine Tabelle. Wählen Sie das Shapefile (.shp) daneben.</translation>
    </message>
    <message>
        <source>This is a DWG drawing, which is not read. Save it as DXF.</source>
        <translation>Dies ist eine DWG-Zeichnung, die nicht gelesen wird. Speichern Sie sie als DXF.</translation>
    </message>
    <message>
        <source>This is a DGN drawing, which is not read. Save it as DXF.</source>
        <translation>Dies ist eine DGN-Zeichnung, die nicht gelesen wird. Speichern Sie sie als DXF.</translation>
    </message>
    <message>
        <source>This is a .zip archive. Unpack it and choose a file from it.</source>
        <translation>Dies ist ein .zip-Archiv. Entpacken Sie es und wählen Sie eine Datei daraus.</translation>
    </message>
    <message>
        <source>This file is compressed (gzip). Unpack it first.</source>
        <translation>Diese Datei ist komprimiert (gzip). Entpacken Sie sie zuerst.</translation>
    </message>
    <message>
        <source>This is a database such as a GeoPackage, which is written but not read.</source>
        <translation>Dies ist eine Datenbank wie ein GeoPackage, das geschrieben, aber nicht gelesen wird.</translation>
    </message>
    <message>
        <source>This looks like GeoJSON, which is written but not read.</source>
        <translation>Dies sieht nach GeoJSON aus, das geschrieben, aber nicht gelesen wird.</translation>
    </message>
    <message>
        <source>This is XML (KML, GML or a web page), which is not read.</source>
        <translation>Dies ist XML (KML, GML oder eine Webseite), das nicht gelesen wird.</translation>
    </message>
    <message>
        <source>This is a PDF document, which is not read.</source>
        <translation>Dies ist ein PDF-Dokument, das nicht gelesen wird.</translation>
    </message>
    <message>
        <source>This is an image, which is not read.</source>
        <translation>Dies ist ein Bild, das nicht gelesen wird.</translation>
    </message>
    <message>
        <source>This is text of two bytes a letter. Save it as UTF-8.</source>
        <translation>Dies ist Text mit zwei Bytes je Buchstabe. Speichern Sie ihn als UTF-8.</translation>
    </message>
    <message>
        <source>This is plain text and looks like none of the drawings that are read.</source>
        <translation>Dies ist einfacher Text und gleicht keiner der Zeichnungen, die gelesen werden.</translation>
    </message>
    <message>
        <source>By its content this is another format: %1.</source>
        <translation>Dem Inhalt nach ist dies ein anderes Format: %1.</translation>
    </message>
    <message>
        <source>Change format</source>
        <translation>Format wechseln</translation>
    </message>
    <message>
        <source>1 element</source>
        <translation>1 Element</translation>
    </message>
    <message>
        <source>%1 elements</source>
        <translation>%1 Elemente</translation>
    </message>
    <message>
        <source>%1 on 1 layer</source>
        <translation>%1 auf 1 Layer</translation>
    </message>
    <message>
        <source>%1 on %2 layers</source>
        <translation>%1 auf %2 Layern</translation>
    </message>
    <message>
        <source>%1 so far</source>
        <translation>bisher %1</translation>
    </message>
    <message>
        <source>Type a path, browse, or drop a file on this window.</source>
        <translation>Tippen Sie einen Pfad, durchsuchen Sie die Ordner oder ziehen Sie eine Datei auf dieses Fenster.</translation>
    </message>
    <message>
        <source>no coordinate system named</source>
        <translation>kein Koordinatensystem genannt</translation>
    </message>
    <message>
        <source>This is a folder. Add the name of a file.</source>
        <translation>Dies ist ein Ordner. Fügen Sie den Namen einer Datei an.</translation>
    </message>
    <message>
        <source>Say where the result is to go.</source>
        <translation>Geben Sie an, wohin das Ergebnis soll.</translation>
    </message>
    <message>
        <source>This is the input itself. Choose another name.</source>
        <translation>Dies ist die Eingabe selbst. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>A device or a pipe takes the result.</source>
        <translation>Ein Gerät oder eine Pipe nimmt das Ergebnis.</translation>
    </message>
    <message>
        <source>%1 may not be written: you lack the right.</source>
        <translation>%1 darf nicht geschrieben werden: Ihnen fehlt das Recht.</translation>
    </message>
    <message>
        <source>The folder %1 takes no files from you: you lack the right.</source>
        <translation>Der Ordner %1 nimmt von Ihnen keine Dateien: Ihnen fehlt das Recht.</translation>
    </message>
    <message>
        <source>New file in %1</source>
        <translation>Neue Datei in %1</translation>
    </message>
    <message>
        <source>Replaces %1 in %2</source>
        <translation>Ersetzt %1 in %2</translation>
    </message>
    <message>
        <source>The name does not end in %1, as the format does.</source>
        <translation>Der Name endet nicht auf %1 wie das Format.</translation>
    </message>
    <message>
        <source>This belongs to the input. Choose another name.</source>
        <translation>Diese Datei gehört zur Eingabe. Wählen Sie einen anderen Namen.</translation>
    </message>
</context>
<context>
    <name>tesselink::PreviewLayers</name>
    <message>
        <source>All layers</source>
        <translation>Alle Layer</translation>
    </message>
    <message>
        <source>Layers of the input</source>
        <translation>Layer der Eingabe</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>other layers</source>
        <translation>andere Layer</translation>
    </message>
</context>
<context>
    <name>tesselink::PreviewLegend</name>
    <message>
        <source>lines</source>
        <translation>Linien</translation>
    </message>
    <message>
        <source>points</source>
        <translation>Punkte</translation>
    </message>
    <message>
        <source>texts</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>areas, which become lines</source>
        <translation>Flächen, die zu Linien werden</translation>
    </message>
    <message>
        <source>line types</source>
        <translation>Linientypen</translation>
    </message>
    <message>
        <source>colours beside those of the layers</source>
        <translation>andere Farben als die der Layer</translation>
    </message>
    <message>
        <source>Not in the output: %1</source>
        <translation>Nicht in der Ausgabe: %1</translation>
    </message>
</context>
<context>
    <name>tesselink::PreviewPane</name>
    <message>
        <source> and %1 more</source>
        <translation> und %1 weitere</translation>
    </message>
</context>
<context>
    <name>tesselink::PreviewStatus</name>
    <message>
        <source>About the input</source>
        <translation>Über die Eingabe</translation>
    </message>
    <message>
        <source>1 element</source>
        <translation>1 Element</translation>
    </message>
    <message>
        <source>%1 elements</source>
        <translation>%1 Elemente</translation>
    </message>
    <message>
        <source>x %1 to %2</source>
        <translation>x %1 bis %2</translation>
    </message>
    <message>
        <source>y %1 to %2</source>
        <translation>y %1 bis %2</translation>
    </message>
    <message>
        <source>A few vertices lie far away from all others; zoom out to see them.</source>
        <translation>Einige Punkte liegen weit weg von allen anderen; verkleinern Sie die Ansicht, um sie zu sehen.</translation>
    </message>
    <message>
        <source>reading, %1%</source>
        <translation>wird gelesen, %1%</translation>
    </message>
    <message>
        <source> (more: point here)</source>
        <translation> (mehr: hierher zeigen)</translation>
    </message>
</context>
<context>
    <name>tesselink::PreviewWidget</name>
    <message>
        <source>Preview of the input</source>
        <translation>Vorschau der Eingabe</translation>
    </message>
    <message>
        <source>Preview of the output</source>
        <translation>Vorschau der Ausgabe</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Ganz</translation>
    </message>
    <message>
        <source>Show the whole drawing</source>
        <translation>Die ganze Zeichnung zeigen</translation>
    </message>
    <message>
        <source>Measure</source>
        <translation>Messen</translation>
    </message>
    <message>
        <source>Measure distances (M)</source>
        <translation>Abstände messen (M)</translation>
    </message>
    <message>
        <source>Close the output</source>
        <translation>Die Ausgabe schließen</translation>
    </message>
    <message>
        <source>Show the input alone</source>
        <translation>Nur die Eingabe zeigen</translation>
    </message>
    <message>
        <source>Place under the pointer</source>
        <translation>Stelle unter dem Zeiger</translation>
    </message>
    <message>
        <source>Wheel or + and -: zoom. Drag or arrows: move. Double click or F: show all. Click or Return: what is there.</source>
        <translation>Rad oder + und -: Größe. Ziehen oder Pfeile: verschieben. Doppelklick oder F: alles zeigen. Klick oder Eingabetaste: was dort liegt.</translation>
    </message>
    <message>
        <source>Choose a file, or drop one here</source>
        <translation>Wählen Sie eine Datei oder ziehen Sie sie hierher</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>Nichts zu zeigen</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>Wird gelesen…</translation>
    </message>
    <message>
        <source>Input: %1, elements: %2</source>
        <translation>Eingabe: %1, Elemente: %2</translation>
    </message>
    <message>
        <source>Output: %1, elements: %2</source>
        <translation>Ausgabe: %1, Elemente: %2</translation>
    </message>
    <message>
        <source>x %1   y %2</source>
        <translation>x %1   y %2</translation>
    </message>
    <message>
        <source>Drag a window around what to take, or mark two corners with Return. Escape gives it up.</source>
        <translation>Ziehen Sie ein Rechteck um das Gewünschte oder setzen Sie zwei Ecken mit der Eingabetaste. Esc gibt auf.</translation>
    </message>
    <message>
        <source>Click the places to measure between, or mark the middle with Return. Escape ends measuring.</source>
        <translation>Klicken Sie die Stellen an, zwischen denen gemessen wird, oder setzen Sie die Mitte mit der Eingabetaste. Esc beendet das Messen.</translation>
    </message>
    <message>
        <source>Total %1, last leg %2. Backspace takes the last place back.</source>
        <translation>Zusammen %1, letzte Strecke %2. Die Rücktaste nimmt die letzte Stelle zurück.</translation>
    </message>
    <message>
        <source>It was not found again; the file may have changed since it was read.</source>
        <translation>Es wurde nicht wiedergefunden; die Datei kann sich geändert haben, seit sie gelesen wurde.</translation>
    </message>
</context>
<context>
    <name>tesselink::QtInteraction</name>
    <message>
        <source>&amp;Don&apos;t show again for this run</source>
        <translation>&amp;Bei dieser Umwandlung nicht mehr zeigen</translation>
    </message>
    <message>
        <source>%1

is a file of this conversion. Choose another name.</source>
        <translation>%1

ist eine Datei dieser Umwandlung. Wählen Sie einen anderen Namen.</translation>
    </message>
    <message>
        <source>%1: repeats without end. Cancel keeps what was written.</source>
        <translation>%1: wiederholt sich ohne Ende. Abbrechen behält, was geschrieben wurde.</translation>
    </message>
    <message>
        <source>File %1 of %2: %3 (%4 % of the whole)</source>
        <translation>Datei %1 von %2: %3 (%4 % vom Ganzen)</translation>
    </message>
    <message>
        <source>Your answers are not remembered for the next time.</source>
        <translation>Ihre Antworten werden nicht für das nächste Mal gemerkt.</translation>
    </message>
</context>
<context>
    <name>tesselink::QuestionButtons</name>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abb&amp;rechen</translation>
    </message>
    <message>
        <source>Ends the conversion; nothing is written</source>
        <translation>Beendet die Umwandlung; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>End the conversion?</source>
        <translation>Die Umwandlung beenden?</translation>
    </message>
    <message>
        <source>Nothing is written. An output that is there already stays as it is.</source>
        <translation>Nichts wird geschrieben. Eine Ausgabe, die es schon gibt, bleibt, wie sie ist.</translation>
    </message>
</context>
<context>
    <name>tesselink::QueueModel</name>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Done before</source>
        <translation>Schon erledigt</translation>
    </message>
    <message>
        <source>Converting</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Incomplete</source>
        <translation>Unvollständig</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Gescheitert</translation>
    </message>
    <message>
        <source>%1 gone</source>
        <translation>%1 verloren</translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation>%1 geändert</translation>
    </message>
    <message>
        <source>none counted</source>
        <translation>keine gezählt</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Geschrieben: %1</translation>
    </message>
    <message>
        <source>Gone: %1</source>
        <translation>Verloren: %1</translation>
    </message>
    <message>
        <source>Changed: %1</source>
        <translation>Geändert: %1</translation>
    </message>
    <message>
        <source>Remark: %1</source>
        <translation>Bemerkung: %1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Stand</translation>
    </message>
    <message>
        <source>Losses</source>
        <translation>Verluste</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Ausgelassen</translation>
    </message>
</context>
<context>
    <name>tesselink::QueueWindow</name>
    <message>
        <source>Many Files</source>
        <translation>Viele Dateien</translation>
    </message>
    <message>
        <source>Part of the files that have ended</source>
        <translation>Anteil der Dateien, die fertig sind</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>What there is to say of the chosen file</source>
        <translation>Was es über die gewählte Datei zu sagen gibt</translation>
    </message>
    <message>
        <source>Add &amp;Files...</source>
        <translation>Dateien hin&amp;zufügen...</translation>
    </message>
    <message>
        <source>Add Fol&amp;der...</source>
        <translation>Ordner hinzufü&amp;gen...</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Into One Output Instead...</source>
        <translation>Stattdessen in e&amp;ine Ausgabe...</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>&amp;Durchsuchen...</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Classic</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Re&amp;place files that exist</source>
        <translation>&amp;Vorhandene Dateien ersetzen</translation>
    </message>
    <message>
        <source>Fo&amp;lder of the Outputs:</source>
        <translation>Ordner der &amp;Ausgaben:</translation>
    </message>
    <message>
        <source>&amp;Output Format:</source>
        <translation>Ausgabef&amp;ormat:</translation>
    </message>
    <message>
        <source>Dialec&amp;t:</source>
        <translation>Diale&amp;kt:</translation>
    </message>
    <message>
        <source>Cop&amp;y as Command</source>
        <translation>Als &amp;Befehl kopieren</translation>
    </message>
    <message>
        <source>Sa&amp;ve Report...</source>
        <translation>Be&amp;richt speichern...</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Starten</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abb&amp;rechen</translation>
    </message>
    <message>
        <source>Clos&amp;e</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Add Files</source>
        <translation>Dateien hinzufügen</translation>
    </message>
    <message>
        <source>All drawings</source>
        <translation>Alle Zeichnungen</translation>
    </message>
    <message>
        <source>All Files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Add a Folder</source>
        <translation>Einen Ordner hinzufügen</translation>
    </message>
    <message>
        <source>Folder of the Outputs</source>
        <translation>Ordner der Ausgaben</translation>
    </message>
    <message>
        <source>Save Report</source>
        <translation>Bericht speichern</translation>
    </message>
    <message>
        <source>Reports of batches</source>
        <translation>Berichte von Stapeln</translation>
    </message>
    <message>
        <source>%1 could not be written.</source>
        <translation>%1 konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Looking at the files...</source>
        <translation>Die Dateien werden angesehen...</translation>
    </message>
    <message>
        <source>No drawings were found there.</source>
        <translation>Dort wurden keine Zeichnungen gefunden.</translation>
    </message>
    <message>
        <source>and %1 more like these</source>
        <translation>und %1 weitere wie diese</translation>
    </message>
    <message>
        <source>Choose another folder, or tick &quot;Replace files that exist&quot;. What is read is never replaced.</source>
        <translation>Wählen Sie einen anderen Ordner oder kreuzen Sie „Vorhandene Dateien ersetzen“ an. Was gelesen wird, wird nie ersetzt.</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 von %2 Dateien</translation>
    </message>
    <message>
        <source>%1 failed</source>
        <translation>%1 gescheitert</translation>
    </message>
    <message>
        <source>%1 of %2 files converted, %3 failed</source>
        <translation>%1 von %2 Dateien umgewandelt, %3 gescheitert</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Gescheitert</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Are you sure you want to cancel?</source>
        <translation>Wollen Sie wirklich abbrechen?</translation>
    </message>
    <message>
        <source>Cancelling...</source>
        <translation>Wird abgebrochen...</translation>
    </message>
    <message>
        <source>The program &quot;tesselink&quot;, which converts many files, is not installed beside this window. Install the package &quot;tesselink&quot;.</source>
        <translation>Das Programm „tesselink“, das viele Dateien umwandelt, ist neben diesem Fenster nicht installiert. Installieren Sie das Paket „tesselink“.</translation>
    </message>
    <message>
        <source>Add drawings or folders, or drop them here.</source>
        <translation>Fügen Sie Zeichnungen oder Ordner hinzu oder ziehen Sie sie hierher.</translation>
    </message>
    <message>
        <source>Choose the folder of the outputs.</source>
        <translation>Wählen Sie den Ordner der Ausgaben.</translation>
    </message>
    <message>
        <source>Two drawings cannot become one file. The second one is left out.</source>
        <translation>Zwei Zeichnungen können nicht zu einer Datei werden. Die zweite wird ausgelassen.</translation>
    </message>
    <message>
        <source>%1 left out</source>
        <translation>%1 ausgelassen</translation>
    </message>
    <message>
        <source>Ope&amp;n Folder</source>
        <translation>Ord&amp;ner öffnen</translation>
    </message>
</context>
<context>
    <name>tesselink::ResultPage</name>
    <message>
        <source>Summary</source>
        <translation>Zusammenfassung</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Gescheitert</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Ended early</source>
        <translation>Vorzeitig beendet</translation>
    </message>
    <message>
        <source>Counts</source>
        <translation>Zählungen</translation>
    </message>
    <message>
        <source>Written to %1</source>
        <translation>Nach %1 geschrieben</translation>
    </message>
    <message>
        <source>No losses were counted.</source>
        <translation>Keine Verluste gezählt.</translation>
    </message>
    <message>
        <source>Remarks</source>
        <translation>Bemerkungen</translation>
    </message>
    <message>
        <source>Gone</source>
        <translation>Verloren</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
</context>
<context>
    <name>tesselink::fDBFSel</name>
    <message>
        <source>DBF Fields</source>
        <translation>DBF-Felder</translation>
    </message>
    <message>
        <source>Values of the field</source>
        <translation>Werte des Feldes</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>&amp;More…</source>
        <translation>&amp;Mehr…</translation>
    </message>
    <message>
        <source>What the texts look like, and the colour of shapes and texts</source>
        <translation>Wie die Texte aussehen, und die Farbe von Shapes und Texten</translation>
    </message>
    <message>
        <source>Text made of several fields, each named in braces; it takes the place of the text field</source>
        <translation>Text aus mehreren Feldern, jedes in geschweiften Klammern; er tritt an die Stelle des Textfelds</translation>
    </message>
    <message>
        <source>A number, or the field that holds the height of each text</source>
        <translation>Eine Zahl oder das Feld mit der Höhe jedes Textes</translation>
    </message>
    <message>
        <source>Degrees, or the field that holds the angle of each text</source>
        <translation>Grad oder das Feld mit dem Winkel jedes Textes</translation>
    </message>
    <message>
        <source>The field that holds the colour of each shape and its text: a number, a name or #rrggbb</source>
        <translation>Das Feld mit der Farbe jedes Shapes und seines Textes: eine Zahl, ein Name oder #rrggbb</translation>
    </message>
    <message>
        <source>Tem&amp;plate:</source>
        <translation>Vor&amp;lage:</translation>
    </message>
    <message>
        <source>&amp;Height:</source>
        <translation>&amp;Höhe:</translation>
    </message>
    <message>
        <source>&amp;Angle:</source>
        <translation>&amp;Winkel:</translation>
    </message>
    <message>
        <source>Colo&amp;ur Field:</source>
        <translation>&amp;Farbfeld:</translation>
    </message>
    <message>
        <source>Select the field in the DBF file that holds the layer names, then select continue.</source>
        <translation>Wählen Sie das Feld der DBF-Datei, das die Namen der Layer enthält, dann „Weiter“.</translation>
    </message>
    <message>
        <source>If there is a text field in the DBF file, select it now, otherwise select continue.</source>
        <translation>Wenn die DBF-Datei ein Textfeld hat, wählen Sie es jetzt, sonst gleich „Weiter“.</translation>
    </message>
    <message>
        <source>&amp;Layer Field Name:</source>
        <translation>Name des &amp;Layerfelds:</translation>
    </message>
    <message>
        <source>&amp;Text Field Name:</source>
        <translation>Name des &amp;Textfelds:</translation>
    </message>
    <message>
        <source>As la&amp;st time: %1</source>
        <translation>Wie &amp;zuletzt: %1</translation>
    </message>
    <message>
        <source>Without a layer field everything goes to the layer &quot;Unassociated&quot;.</source>
        <translation>Ohne ein Layerfeld kommt alles auf den Layer „Unassociated“.</translation>
    </message>
    <message>
        <source>Without a layer field everything goes to the layer &quot;0&quot;.</source>
        <translation>Ohne ein Layerfeld kommt alles auf den Layer „0“.</translation>
    </message>
    <message>
        <source>This table tells of a drawing. Without any field chosen that drawing is read, with its layers.</source>
        <translation>Diese Tabelle beschreibt eine Zeichnung. Ohne gewähltes Feld wird jene Zeichnung gelesen, mit ihren Layern.</translation>
    </message>
</context>
<context>
    <name>tesselink::fTRDig</name>
    <message>
        <source>&amp;Township</source>
        <translation>&amp;Township</translation>
    </message>
    <message>
        <source>Choose the field that holds the township.</source>
        <translation>Wählen Sie das Feld, das die Township enthält.</translation>
    </message>
    <message>
        <source>&amp;Range</source>
        <translation>Ran&amp;ge</translation>
    </message>
    <message>
        <source>Choose the field that holds the range.</source>
        <translation>Wählen Sie das Feld, das die Range enthält.</translation>
    </message>
    <message>
        <source>&amp;Section</source>
        <translation>&amp;Section</translation>
    </message>
    <message>
        <source>Choose the field that holds the section.</source>
        <translation>Wählen Sie das Feld, das die Section enthält.</translation>
    </message>
    <message>
        <source>Locate Township and Range Fields</source>
        <translation>Felder für Township und Range finden</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>Township and Range Fields</source>
        <translation>Felder für Township und Range</translation>
    </message>
    <message>
        <source>Ta&amp;ble</source>
        <translation>Ta&amp;belle</translation>
    </message>
    <message>
        <source>Choose the table</source>
        <translation>Die Tabelle wählen</translation>
    </message>
    <message>
        <source>Table</source>
        <translation>Tabelle</translation>
    </message>
    <message>
        <source>Browsing...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <source>dBase Tables (*.dbf *.DBF);;All Files (*)</source>
        <translation>dBase-Tabellen (*.dbf *.DBF);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Choose the dBase table (.dbf) that holds the townships, ranges and sections.</source>
        <translation>Wählen Sie die dBase-Tabelle (.dbf), die Townships, Ranges und Sections enthält.</translation>
    </message>
    <message>
        <source>%1 cannot be read. Choose another table.</source>
        <translation>%1 kann nicht gelesen werden. Wählen Sie eine andere Tabelle.</translation>
    </message>
    <message>
        <source>%1 has no fields. Choose another table.</source>
        <translation>%1 hat keine Felder. Wählen Sie eine andere Tabelle.</translation>
    </message>
    <message>
        <source>%1. Choose another table.</source>
        <translation>%1. Wählen Sie eine andere Tabelle.</translation>
    </message>
    <message>
        <source>The table has no field &quot;%1&quot;.</source>
        <translation>Die Tabelle hat kein Feld „%1“.</translation>
    </message>
</context>
<context>
    <name>tesselink::frmDBFScan</name>
    <message>
        <source>Loading...</source>
        <translation>Laden...</translation>
    </message>
    <message>
        <source>Loading Database...</source>
        <translation>Datenbank wird geladen...</translation>
    </message>
    <message>
        <source>Records loaded</source>
        <translation>Geladene Datensätze</translation>
    </message>
</context>
<context>
    <name>tesselink::frmESRIType</name>
    <message>
        <source>Points or Text</source>
        <translation>Punkte oder Texte</translation>
    </message>
    <message>
        <source>Polyline</source>
        <translation>Polylinie</translation>
    </message>
    <message>
        <source>Polygon</source>
        <translation>Polygon</translation>
    </message>
    <message>
        <source>Multipoint</source>
        <translation>Multipunkt</translation>
    </message>
    <message>
        <source>ESRI Shape File Type</source>
        <translation>Art des ESRI-Shapefiles</translation>
    </message>
    <message>
        <source>ESRI Shape files have the limitation that they can only support one type of entity at a time. Which type of entity would you like this file to be?</source>
        <translation>ESRI-Shapefiles können nur jeweils eine Art von Elementen enthalten. Welche Art von Elementen soll diese Datei enthalten?</translation>
    </message>
</context>
<context>
    <name>tesselink::frmLayers</name>
    <message>
        <source>Only layers &amp;without a type</source>
        <translation>Nur Layer &amp;ohne Objektart</translation>
    </message>
    <message>
        <source>Layer Name Matching</source>
        <translation>Layernamen zuordnen</translation>
    </message>
    <message>
        <source>Entity types are codes for CDF drawings. For this output they may stay empty.</source>
        <translation>Objektarten sind Codes für CDF-Zeichnungen. Für diese Ausgabe können sie leer bleiben.</translation>
    </message>
    <message>
        <source>&amp;Find layer:</source>
        <translation>Layer &amp;finden:</translation>
    </message>
    <message>
        <source>part of its name</source>
        <translation>Teil seines Namens</translation>
    </message>
    <message>
        <source>CDF Entity Type</source>
        <translation>CDF-Objektart</translation>
    </message>
    <message>
        <source>no type</source>
        <translation>keine Objektart</translation>
    </message>
    <message>
        <source>Entity type of %1</source>
        <translation>Objektart von %1</translation>
    </message>
    <message>
        <source>One row up</source>
        <translation>Eine Zeile nach oben</translation>
    </message>
    <message>
        <source>One row down</source>
        <translation>Eine Zeile nach unten</translation>
    </message>
    <message>
        <source>Assign Types</source>
        <translation>Arten zuweisen</translation>
    </message>
    <message>
        <source>Smart Assign</source>
        <translation>Klug zuweisen</translation>
    </message>
    <message>
        <source>C&amp;ontinue</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>%1 of %2 layers have an entity type</source>
        <translation>%1 von %2 Layern haben eine Objektart</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no entity type, so this layer gets none.</source>
        <translation>„%1“ ist keine Objektart, daher bekommt dieser Layer keine.</translation>
    </message>
    <message>
        <source>Return takes &quot;%1&quot;.</source>
        <translation>Die Eingabetaste nimmt „%1“.</translation>
    </message>
    <message>
        <source>%1 shown</source>
        <translation>%1 gezeigt</translation>
    </message>
</context>
<context>
    <name>tesselink::frmPoint</name>
    <message>
        <source>Point entities were found in the input file. A Point entity may represent a well, a spot elevation, or some other feature which can be represented by a single point. As the CDF file does not directly support the dynamic placement of symbols at specific points, such entities can not be accurately represented in a CDF. In order to bring these entities in to a mapping package, it is therefore necessare to create a second output file containing only these entities. The output file should be easily importable in to Quarrydesk after an input file format has been defined using the define conversions option in Quarrydesk. If you choose to create a 2nd Output file, a 2nd file will be created in the same folder as the first output, but with the extention of .pts.</source>
        <translation>In der Eingabedatei wurden Punkte gefunden. Ein Punkt kann eine Bohrung, eine Höhenangabe oder etwas anderes darstellen, das sich durch einen einzelnen Punkt darstellen lässt. Da die CDF-Datei das freie Setzen von Symbolen an bestimmte Stellen nicht unmittelbar kennt, lassen sich solche Elemente in einer CDF-Datei nicht genau darstellen. Um sie in ein Kartenprogramm zu bringen, ist daher eine zweite Ausgabedatei nötig, die nur diese Elemente enthält. Sie sollte sich leicht in Quarrydesk einlesen lassen, nachdem dort unter „define conversions“ ein Eingabeformat festgelegt wurde. Wenn Sie eine 2. Ausgabedatei anlegen, entsteht sie im selben Ordner wie die erste, mit der Endung .pts.</translation>
    </message>
    <message>
        <source>Create a 2nd Output file for point entities</source>
        <translation>Eine 2. Ausgabedatei für Punkte anlegen</translation>
    </message>
    <message>
        <source>Ignore Point elements</source>
        <translation>Punkte nicht beachten</translation>
    </message>
    <message>
        <source>Point Entities Found in the Input File</source>
        <translation>Punkte in der Eingabedatei gefunden</translation>
    </message>
    <message>
        <source>If you need help with this, please write to %1.</source>
        <translation>Wenn Sie dabei Hilfe brauchen, schreiben Sie bitte an %1.</translation>
    </message>
</context>
<context>
    <name>tesselink::frmProgress</name>
    <message>
        <source>Progress...</source>
        <translation>Fortschritt...</translation>
    </message>
    <message>
        <source>Part of the input that was read</source>
        <translation>Anteil der Eingabe, der gelesen wurde</translation>
    </message>
    <message>
        <source>Minimum X</source>
        <translation>Kleinstes X</translation>
    </message>
    <message>
        <source>Minimum Y</source>
        <translation>Kleinstes Y</translation>
    </message>
    <message>
        <source>Maximum X</source>
        <translation>Größtes X</translation>
    </message>
    <message>
        <source>Maximum Y</source>
        <translation>Größtes Y</translation>
    </message>
    <message>
        <source>Minimum X :</source>
        <translation>Kleinstes X :</translation>
    </message>
    <message>
        <source>Maximum X :</source>
        <translation>Größtes X :</translation>
    </message>
    <message>
        <source>Minimum Y :</source>
        <translation>Kleinstes Y :</translation>
    </message>
    <message>
        <source>Maximum Y :</source>
        <translation>Größtes Y :</translation>
    </message>
    <message>
        <source>&amp;Open Folder</source>
        <translation>&amp;Ordner öffnen</translation>
    </message>
    <message>
        <source>Co&amp;py Summary</source>
        <translation>Zusammenfassung &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>Abb&amp;rechen</translation>
    </message>
    <message>
        <source>&amp;Done</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>%1 read</source>
        <translation>%1 gelesen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Are you sure you want to cancel?</source>
        <translation>Wollen Sie wirklich abbrechen?</translation>
    </message>
    <message>
        <source>Convert Again in &amp;Standard</source>
        <translation>Noch einmal in &amp;Standard</translation>
    </message>
    <message>
        <source>The standard dialect keeps more of this drawing.</source>
        <translation>Der Standard-Dialekt behält mehr von dieser Zeichnung.</translation>
    </message>
</context>
</TS>
