// node other_engine.mjs PACKAGE WORK FIRST LAST LOST: a FIX 4.4 acceptor made with the package jspurefix in the folder
// PACKAGE, an engine that shares nothing with ours. Sends the trades FIRST to LAST to whoever logs on, and answers resend
// requests. Numbers and messages are kept in WORK, as is the port, so that it can be started again for the next trades.
// The lines of WORK/sent have execution, quantity and price of each trade.
// With LOST above 0 that many of the last trades are numbered and kept but do not reach the socket, which is then
// dropped; the program ends. Otherwise it serves the session until it is ended.
import fs from 'node:fs'
import path from 'node:path'
import { createRequire } from 'node:module'

const [packageFolder, work, ...numbers] = process.argv.slice(2)
const [first, last, lost] = numbers.map(Number)
const load = createRequire(path.resolve(packageFolder, 'x'))
load('reflect-metadata')
const { AsciiSession, EmptyLogFactory, SessionLauncher } = load('jspurefix')

const kExecutionReport = '8'
const kSymbols = ['GOLD', 'SILVER', 'COPPER', 'ZINC', 'NICKEL']

// Trade n, the same in every run. Prices have at most six digits, as the daily file has.
function TradeOf (n) {
  const quantity = 1 + n * 13 % 97
  const price = (10000 + n * 37) / 100
  return {
    OrderID: `O${n}`,
    ClOrdID: `C${n}`,
    ExecID: `X${n}`,
    ExecType: 'F',
    OrdStatus: '1',
    Account: `ACCOUNT${n % 7}`,
    Instrument: { Symbol: kSymbols[n % kSymbols.length], SecurityID: `${1000 + n % kSymbols.length}`, SecurityExchange: 'MCX' },
    Side: n % 2 === 0 ? '1' : '2',
    OrderQtyData: { OrderQty: 6 * quantity },
    OrdType: '2',
    LastQty: quantity,
    LastPx: price,
    LeavesQty: 2 * quantity,
    CumQty: 4 * quantity,
    AvgPx: price + 1,
    TransactTime: new Date(Date.UTC(2026, 2, 2, 9, 0, n)),
    Parties: {
      NoPartyIDs: [{ PartyID: `MEMBER${n % 3}`, PartyIDSource: 'D', PartyRole: 1 },
        { PartyID: `DEALER${n}`, PartyIDSource: 'D', PartyRole: 12 }]
    }
  }
}

class Venue extends AsciiSession {
  constructor (config) {
    super(config)
    // The package does not wait for its store, so what it writes is remembered here.
    this.writes = []
    for (const name of ['put', 'setSenderSeqNum', 'setTargetSeqNum']) {
      const write = this.sessionStore[name].bind(this.sessionStore)
      this.sessionStore[name] = (...values) => {
        const done = write(...values)
        this.writes.push(done)
        return done
      }
    }
  }

  onLogon () { return true }
  onApplicationMsg () {}
  onDecoded () {}
  onEncoded () {}
  onStopped () {}

  onReady () {
    this.SendAll().catch(End)
  }

  async SendAll () {
    for (; Venue.next <= last; ++Venue.next) {
      if (Venue.next === last - lost + 1) this.transport.duplex.socket.cork()
      await this.SendOne(TradeOf(Venue.next))
    }
    console.log(`sent ${last}`)
    if (lost > 0) await this.Drop()
  }

  SendOne (trade) {
    fs.appendFileSync(path.join(work, 'sent'), `${trade.ExecID},${trade.LastQty},${trade.LastPx}\n`)
    return new Promise((resolve, reject) => this.send(kExecutionReport, trade, error => {
      error ? reject(error) : setImmediate(resolve)
    }))
  }

  // The package cannot send encoded messages again, only objects: those of trades are made anew, with the number and the
  // time that they had. What stands between them is filled.
  onResendRequest (view) {
    const [begin, end] = view.getTypedTags([7, 16])
    this.Resend(begin, end === 0 ? this.lastSentSeqNum() : end).catch(End)
  }

  async Resend (begin, end) {
    let filled = begin
    let count = 0
    for (const record of await this.sessionStore.getRange(begin, end)) {
      const trade = /[\x01|]17=X(\d+)[\x01|]/.exec(record.encoded)
      if (!trade) continue
      this.Fill(filled, record.seqNum)
      const header = { MsgSeqNum: record.seqNum, PossDupFlag: true, SendingTime: record.timestamp }
      this.send(kExecutionReport, { ...TradeOf(Number(trade[1])), StandardHeader: header })
      filled = record.seqNum + 1
      ++count
    }
    this.Fill(filled, end + 1)
    console.log(`sent again ${count}`)
  }

  Fill (from, next) {
    if (from >= next) return
    const header = { MsgSeqNum: from, PossDupFlag: true, SendingTime: new Date() }
    this.send('4', { GapFillFlag: true, NewSeqNo: next, StandardHeader: header })
  }

  // Drops the connection with the corked messages in it.
  async Drop () {
    this.transport.duplex.socket.destroy()
    await Promise.all(this.writes)
    await this.sessionStore.setSenderSeqNum(this.lastSentSeqNum() + 1)
    await this.sessionStore.setTargetSeqNum(this.lastPeerSeqNum() + 1)
    process.exit(0)
  }
}
Venue.next = first

class Launcher extends SessionLauncher {
  makeFactory () {
    return { makeSession: config => new Venue(config) }
  }
}

function End (error) {
  console.error(error)
  process.exit(1)
}

// The port of the run before, or a free one.
const portFile = path.join(work, 'port')
const port = fs.existsSync(portFile) ? Number(fs.readFileSync(portFile)) : 0

const launcher = new Launcher(null, {
  application: {
    type: 'acceptor',
    name: 'venue',
    // The package hands this to the socket, which also takes the address to listen at.
    tcp: { host: '127.0.0.1', port: { host: '127.0.0.1', port } },
    protocol: 'ascii',
    dictionary: 'qf44'
  },
  ResetSeqNumFlag: false,
  HeartBtInt: 5,
  SenderCompId: 'OTHER',
  TargetCompID: 'DESK',
  BeginString: 'FIX.4.4',
  store: { type: 'file', directory: path.join(work, 'store') }
}, new EmptyLogFactory())
launcher.run().catch(End)

// The package does not tell where it listens.
const waiting = setInterval(() => {
  const address = launcher.acceptorEntity?.acceptor?.server?.address()
  if (!address) return
  clearInterval(waiting)
  fs.writeFileSync(`${portFile}.new`, `${address.port}\n`)
  fs.renameSync(`${portFile}.new`, portFile)
}, 10)
