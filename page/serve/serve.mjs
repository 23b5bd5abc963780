// serve.mjs FOLDER [PORT]: serves a folder of pages with the stand-in, until it is interrupted. Pages reload when a file
// changes. A file "stand-in.js" in the folder may give the stand-in its options.
import { join } from 'node:path';
import { folders } from '../tools/folders.mjs';
import { startServer } from './server.mjs';

const [folder = '.', port = '0'] = process.argv.slice(2);
const standIn = join(folders.package, 'dist/stand-in/classic.js');
const server = await startServer({ folder, standIn, port: Number(port), reloads: true });
console.log(`${folder}: http://localhost:${server.port}/`);
