// SPDX-FileCopyrightText: The Lorvanite authors
// SPDX-License-Identifier: GPL-3.0-or-later

// node read_with_chordsheetjs.mjs BUILD_TREE SOURCE_TREE
// Writes the songs of the sample as ChordPro, and lets chordsheetjs read them: titles, words and
// chords have to be those of the charts' texts.
import {execFileSync} from 'node:child_process';
import {createRequire} from 'node:module';
import fs from 'node:fs';
import path from 'node:path';

const [build, source] = process.argv.slice(2);
const npm = path.join(build, 'npm'), program = path.join(build, 'program');
const tree = path.join(npm, 'sample'), written = path.join(npm, 'chordpro');
const charts = path.join(source, 'sample', 'charts');
const {ChordProParser} = createRequire(path.resolve(npm, 'x.js'))('chordsheetjs');
for (const folder of [tree, written]) fs.rmSync(folder, {recursive: true, force: true});
const run = (name, words) => execFileSync(name, words, {stdio: 'ignore'});
run(path.join(build, 'lorvanite_make_sample'),
    [path.join(source, 'sample'), program, tree, '2026-11-21']);
run(path.join(program, 'lorvanite-exchange'),
    ['export', '--folder', tree, '--form', 'chordpro', written]);

let faults = 0;
const expect = (what, found, expected) => {
    if (found === expected) return;
    console.error(`${what}: "${found}" instead of "${expected}"`);
    ++faults;
};

// The words and the chords of a text with chords in brackets.
const wordsOf = text => text.replace(/\[[^\]]*\]/g, '').replace(/\s+/g, ' ').trim();
const chordsOf = text => [...text.matchAll(/\[([^\]]*)\]/g)].map(match => match[1]).join(' ');

let songs = 0;
for (const file of fs.readdirSync(charts).filter(name => name.endsWith('.txt'))) {
    const title = file.slice(0, -4);
    const text = fs.readFileSync(path.join(charts, file), 'utf8')
        .split('\n').filter(line => !line.startsWith('#')).slice(2).join('\n');
    const song = new ChordProParser().parse(
        fs.readFileSync(path.join(written, `${title}.cho`), 'utf8'));
    expect(`${title}, title`, song.title, title);
    let words = '', chords = [];
    for (const line of song.lines)
        for (const item of line.items) {
            if (typeof item.lyrics !== 'string') continue;
            words += item.lyrics;
            if (item.chords) chords.push(item.chords);
            if (item === line.items.at(-1)) words += '\n';
        }
    expect(`${title}, words`, wordsOf(words), wordsOf(text));
    expect(`${title}, chords`, chords.join(' '), chordsOf(text));
    ++songs;
}
if (songs < 10) expect('songs', songs, 10);
console.log(`${songs} songs read, ${faults} faults`);
process.exit(faults ? 1 : 0);
